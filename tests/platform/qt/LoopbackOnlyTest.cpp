// The bind() of platform/qt/LoopbackOnly.cpp is linked into this program as into those with
// windows.
#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <netdb.h>
#include <netinet/in.h>
#include <string>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace
{

/// The address that a socket really has after binding it to this one; "refused" for EACCES.
std::string BoundTo(std::string const& text, bool onlyV6 = false, socklen_t cutTo = 999)
{
    addrinfo hints{};
    hints.ai_flags = AI_NUMERICHOST;
    addrinfo* found = nullptr;
    EXPECT_EQ(getaddrinfo(text.c_str(), nullptr, &hints, &found), 0) << text;
    int const fd = socket(found->ai_family, SOCK_STREAM | SOCK_CLOEXEC, 0);
    int const only = onlyV6 ? 1 : 0;
    setsockopt(fd, IPPROTO_IPV6, IPV6_V6ONLY, &only, sizeof only); // nothing to an IPv4 socket
    bool const isBound = bind(fd, found->ai_addr, std::min(found->ai_addrlen, cutTo)) == 0;
    std::string address = errno == EACCES ? "refused" : std::strerror(errno);
    if (isBound) {
        address.resize(INET6_ADDRSTRLEN);
        getsockname(fd, found->ai_addr, &found->ai_addrlen);
        getnameinfo(found->ai_addr, found->ai_addrlen, address.data(), INET6_ADDRSTRLEN, nullptr, 0,
            NI_NUMERICHOST);
        address.resize(std::strlen(address.c_str()));
    }
    freeaddrinfo(found);
    close(fd);
    return address;
}

TEST(LoopbackOnlyTest, ConfinesIPv4AndIPv6)
{
    EXPECT_EQ(BoundTo("0.0.0.0"), "127.0.0.1");
    EXPECT_EQ(BoundTo("127.0.0.2"), "127.0.0.2");
    EXPECT_EQ(BoundTo("192.0.2.1"), "refused");
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
    int const fd = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    EXPECT_EQ(bind(fd, reinterpret_cast<sockaddr*>(&local), sizeof local), 0);
    EXPECT_TRUE(std::filesystem::is_socket(path));
    std::filesystem::remove(path);

    EXPECT_EQ(bind(fd, nullptr, sizeof local), -1);
    EXPECT_EQ(errno, EFAULT);
    close(fd);
    EXPECT_EQ(BoundTo("127.0.0.1", false, 4), std::strerror(EINVAL));
}

} // namespace
