#include "platform/qt/SingleInstance.h"

#include "platform/qt/Descriptor.h"
#include "platform/qt/RuntimeFolder.h"

#include <cerrno>
#include <set>
#include <string>

#include <fcntl.h>
#include <sys/stat.h>

bool IsCORVAppRunning(char const* name, bool hold)
{
    static std::set<std::string> held;
    if (held.contains(name)) {
        return false;
    }
    auto const path = RuntimeFile(name, ".lock");
    if (!path) {
        return false;
    }
    int const create = hold ? O_CREAT : 0;
    CDescriptor file(
        open(path->c_str(), O_RDWR | O_NOFOLLOW | O_CLOEXEC | create, S_IRUSR | S_IWUSR));
    if (!file) {
        return false;
    }
    struct flock whole = {};
    whole.l_type = F_WRLCK;
    whole.l_whence = SEEK_SET;
    if (!hold) {
        // Only looks: taking the lock for a moment could turn away a program that starts just now.
        return fcntl(file.Get(), F_OFD_GETLK, &whole) == 0 && whole.l_type != F_UNLCK;
    }
    if (fcntl(file.Get(), F_OFD_SETLK, &whole) != 0) {
        return errno == EAGAIN || errno == EACCES;
    }
    held.insert(name);
    file.KeepOpen();
    return false;
}
