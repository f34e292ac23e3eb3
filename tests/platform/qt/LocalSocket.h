#pragma once

#include "platform/qt/Descriptor.h"

#include <algorithm>
#include <string>

#include <sys/socket.h>
#include <sys/un.h>

inline CDescriptor MakeSocket(int flags = 0)
{
    return CDescriptor(socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC | flags, 0));
}

/// Calls bind or connect, which take the same arguments, for a socket file.
inline bool AtSocket(decltype(&connect) call, CDescriptor const& end, std::string const& path)
{
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    std::copy_n(path.begin(), std::min(path.size(), sizeof address.sun_path - 1), address.sun_path);
    auto const* const any = reinterpret_cast<sockaddr const*>(&address);
    return call(end.Get(), any, sizeof address) == 0;
}

inline bool IsListening(std::string const& path)
{
    return AtSocket(&connect, MakeSocket(SOCK_NONBLOCK), path);
}
