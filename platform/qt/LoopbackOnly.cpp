// Keeps the programs with windows off the network. They show health data and serve nobody, but Qt's
// VNC platform, which scripts/run offers where there is no display, listens on every address of the
// machine, asks for no password and has no option to change either. The program's own bind() below
// takes the place of the C library's for all libraries it loads, however it was started. A library
// would not do: it is a source of each such program.
#include <cerrno>
#include <cstring>
#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace
{

in_addr const kLoopback{htonl(INADDR_LOOPBACK)};

bool IsLoopback(in_addr const& address)
{
    return ntohl(address.s_addr) >> 24U == IN_LOOPBACKNET;
}

/// Turns "any address" into the loopback address. False for every other address of the machine.
bool Confine(sockaddr_in& name)
{
    if (name.sin_addr.s_addr == htonl(INADDR_ANY)) {
        name.sin_addr = kLoopback;
    }
    return IsLoopback(name.sin_addr);
}

/// The same for IPv6. A socket for both becomes one for 127.0.0.1, because that is what people and
/// tunnels ask for.
bool Confine(int fd, sockaddr_in6& name)
{
    static constexpr std::size_t kMapped = 12; // where ::ffff:a.b.c.d keeps a.b.c.d
    if (IN6_IS_ADDR_UNSPECIFIED(&name.sin6_addr)) {
        int onlyV6 = 1;
        socklen_t size = sizeof onlyV6;
        getsockopt(fd, IPPROTO_IPV6, IPV6_V6ONLY, &onlyV6, &size);
        if (onlyV6 != 0) {
            name.sin6_addr = in6addr_loopback;
        } else {
            name.sin6_addr.s6_addr[10] = name.sin6_addr.s6_addr[11] = 0xff;
            std::memcpy(&name.sin6_addr.s6_addr[kMapped], &kLoopback, sizeof kLoopback);
        }
    }
    in_addr mapped{};
    std::memcpy(&mapped, &name.sin6_addr.s6_addr[kMapped], sizeof mapped);
    return IN6_IS_ADDR_LOOPBACK(&name.sin6_addr)
        || (IN6_IS_ADDR_V4MAPPED(&name.sin6_addr) && IsLoopback(mapped));
}

template <typename Name>
bool Read(Name& name, sockaddr const* address, socklen_t length)
{
    if (length < sizeof name) {
        return false;
    }
    std::memcpy(&name, address, sizeof name);
    return true;
}

int SystemBind(int fd, void const* address, socklen_t length)
{
    return static_cast<int>(syscall(SYS_bind, fd, address, length));
}

int Refuse()
{
    errno = EACCES;
    return -1;
}

} // namespace

/// As in the C library, but for the internet families every address becomes a loopback address or
/// is refused with EACCES. Other families (local sockets) pass unchanged.
// NOLINTNEXTLINE(readability-inconsistent-declaration-parameter-name): theirs are reserved
extern "C" int bind(int fd, sockaddr const* address, socklen_t length) noexcept
{
    sockaddr_in v4{};
    if (address != nullptr && address->sa_family == AF_INET && Read(v4, address, length)) {
        return Confine(v4) ? SystemBind(fd, &v4, sizeof v4) : Refuse();
    }
    sockaddr_in6 v6{};
    if (address != nullptr && address->sa_family == AF_INET6 && Read(v6, address, length)) {
        return Confine(fd, v6) ? SystemBind(fd, &v6, sizeof v6) : Refuse();
    }
    return SystemBind(fd, address, length);
}
