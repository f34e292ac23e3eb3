// The bind() of app/LoopbackOnly.cpp is linked into this program as into the console.
#include <gtest/gtest.h>

#include <arpa/inet.h>
#include <array>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <netinet/in.h>
#include <string>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace
{

/// The address that a socket really has after binding it to this one; "refused" for EACCES.
std::string BoundTo(std::string const& text, bool onlyV6 = false)
{
    sockaddr_in v4{};
    sockaddr_in6 v6{};
    v4.sin_family = AF_INET;
    v6.sin6_family = AF_INET6;
    bool const isV4 = inet_pton(AF_INET, text.c_str(), &v4.sin_addr) == 1;
    EXPECT_TRUE(isV4 || inet_pton(AF_INET6, text.c_str(), &v6.sin6_addr) == 1) << text;
    auto* const name = isV4 ? static_cast<void*>(&v4) : &v6;
    auto const* const address = isV4 ? static_cast<void*>(&v4.sin_addr) : &v6.sin6_addr;
    int const family = isV4 ? AF_INET : AF_INET6;
    socklen_t size = isV4 ? sizeof v4 : sizeof v6;
    int const fd = socket(family, SOCK_STREAM | SOCK_CLOEXEC, 0);
    int const only = onlyV6 ? 1 : 0;
    setsockopt(fd, IPPROTO_IPV6, IPV6_V6ONLY, &only, sizeof only); // nothing to an IPv4 socket
    std::array<char, INET6_ADDRSTRLEN> bound{};
    if (bind(fd, static_cast<sockaddr*>(name), size) != 0) {
        return errno == EACCES ? "refused" : std::strerror(errno);
    }
    getsockname(fd, static_cast<sockaddr*>(name), &size);
    close(fd);
    return inet_ntop(family, address, bound.data(), bound.size());
}

TEST(LoopbackOnlyTest, ConfinesIPv4)
{
    EXPECT_EQ(BoundTo("0.0.0.0"), "127.0.0.1");
    EXPECT_EQ(BoundTo("127.0.0.2"), "127.0.0.2");
    EXPECT_EQ(BoundTo("192.0.2.1"), "refused");
}

TEST(LoopbackOnlyTest, ConfinesIPv6)
{
    if (access("/proc/net/if_inet6", F_OK) != 0) {
        GTEST_SKIP() << "no IPv6 here";
    }
    EXPECT_EQ(BoundTo("::"), "::ffff:127.0.0.1");
    EXPECT_EQ(BoundTo("::ffff:192.0.2.1"), "refused");
    EXPECT_EQ(BoundTo("2001:db8::1"), "refused");
    EXPECT_EQ(BoundTo("2001:db8::1", true), "refused");
    if (BoundTo("::1", true) == "::1") {
        EXPECT_EQ(BoundTo("::", true), "::1");
    }
}

TEST(LoopbackOnlyTest, LeavesLocalSocketsAndErrorsAlone)
{
    auto const path = std::filesystem::path(testing::TempDir()) / ("lo" + std::to_string(getpid()));
    sockaddr_un local{};
    local.sun_family = AF_UNIX;
    path.string().copy(local.sun_path, sizeof local.sun_path - 1);
    int const unixFd = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    EXPECT_EQ(bind(unixFd, reinterpret_cast<sockaddr*>(&local), sizeof local), 0);
    EXPECT_TRUE(std::filesystem::is_socket(path));
    std::filesystem::remove(path);

    EXPECT_EQ(bind(unixFd, nullptr, sizeof local), -1);
    EXPECT_EQ(errno, EFAULT);
    sockaddr_in const cut{.sin_family = AF_INET, .sin_port = 0, .sin_addr = {}, .sin_zero = {}};
    int const fd = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    EXPECT_EQ(bind(fd, reinterpret_cast<sockaddr const*>(&cut), 4), -1);
    EXPECT_EQ(errno, EINVAL);
    close(fd);
    close(unixFd);
}

} // namespace
