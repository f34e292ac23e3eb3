#include "platform/db/Process.h"

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <unistd.h>

void ProtectProcess()
{
    ::umask(S_IRWXG | S_IRWXO);
    ::prctl(PR_SET_DUMPABLE, 0);
    int descriptor = 0;
    do {
        descriptor = ::open("/dev/null", O_RDWR);
    } while (descriptor >= 0 && descriptor <= STDERR_FILENO);
    ::close(descriptor);
}
