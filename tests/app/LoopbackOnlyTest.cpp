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

class CSocket
{
public:
    CSocket(int family, bool onlyV6)
        : m_nFd(socket(family, SOCK_STREAM | SOCK_CLOEXEC, 0))
    {
        int const only = onlyV6 ? 1 : 0;
        if (family == AF_INET6) {
            setsockopt(m_nFd, IPPROTO_IPV6, IPV6_V6ONLY, &only, sizeof only);
        }
    }
    ~CSocket() { close(m_nFd); }
    CSocket(CSocket const&) = delete;
    CSocket& operator=(CSocket const&) = delete;

    bool IsOpen() const { return m_nFd >= 0; }

    /// The address the socket really has after binding it to this one; "refused" for EACCES.
    std::string Bind(std::string const& text) const
    {
        sockaddr_in v4{};
        sockaddr_in6 v6{};
        v4.sin_family = AF_INET;
        v6.sin6_family = AF_INET6;
        bool const isV4 = inet_pton(AF_INET, text.c_str(), &v4.sin_addr) == 1;
        EXPECT_TRUE(isV4 || inet_pton(AF_INET6, text.c_str(), &v6.sin6_addr) == 1) << text;
        int const done = isV4 ? bind(m_nFd, reinterpret_cast<sockaddr*>(&v4), sizeof v4)
                              : bind(m_nFd, reinterpret_cast<sockaddr*>(&v6), sizeof v6);
        if (done != 0) {
            return errno == EACCES ? "refused" : std::strerror(errno);
        }
        std::array<char, INET6_ADDRSTRLEN> name{};
        socklen_t size = sizeof v6;
        getsockname(
            m_nFd, reinterpret_cast<sockaddr*>(isV4 ? static_cast<void*>(&v4) : &v6), &size);
        void const* const address = isV4 ? static_cast<void*>(&v4.sin_addr) : &v6.sin6_addr;
        return inet_ntop(isV4 ? AF_INET : AF_INET6, address, name.data(), name.size());
    }

    int m_nFd;
};

std::string BoundTo(int family, bool onlyV6, std::string const& text)
{
    return CSocket(family, onlyV6).Bind(text);
}

TEST(LoopbackOnlyTest, ConfinesIPv4)
{
    EXPECT_EQ(BoundTo(AF_INET, false, "0.0.0.0"), "127.0.0.1");
    EXPECT_EQ(BoundTo(AF_INET, false, "127.0.0.2"), "127.0.0.2");
    EXPECT_EQ(BoundTo(AF_INET, false, "192.0.2.1"), "refused");
}

TEST(LoopbackOnlyTest, ConfinesIPv6)
{
    if (!CSocket(AF_INET6, false).IsOpen()) {
        GTEST_SKIP() << "no IPv6 here";
    }
    EXPECT_EQ(BoundTo(AF_INET6, false, "::"), "::ffff:127.0.0.1");
    EXPECT_EQ(BoundTo(AF_INET6, false, "::ffff:192.0.2.1"), "refused");
    EXPECT_EQ(BoundTo(AF_INET6, false, "2001:db8::1"), "refused");
    EXPECT_EQ(BoundTo(AF_INET6, true, "2001:db8::1"), "refused");
    if (BoundTo(AF_INET6, true, "::1") == "::1") {
        EXPECT_EQ(BoundTo(AF_INET6, true, "::"), "::1");
    }
}

TEST(LoopbackOnlyTest, LeavesLocalSocketsAndErrorsAlone)
{
    auto const path = std::filesystem::path(testing::TempDir()) / ("lo" + std::to_string(getpid()));
    sockaddr_un local{};
    local.sun_family = AF_UNIX;
    path.string().copy(local.sun_path, sizeof local.sun_path - 1);
    CSocket const socket(AF_UNIX, false);
    EXPECT_EQ(bind(socket.m_nFd, reinterpret_cast<sockaddr*>(&local), sizeof local), 0);
    EXPECT_TRUE(std::filesystem::is_socket(path));
    std::filesystem::remove(path);

    EXPECT_EQ(bind(socket.m_nFd, nullptr, sizeof local), -1);
    EXPECT_EQ(errno, EFAULT);
    sockaddr_in const cut{.sin_family = AF_INET, .sin_port = 0, .sin_addr = {}, .sin_zero = {}};
    CSocket const other(AF_INET, false);
    EXPECT_EQ(bind(other.m_nFd, reinterpret_cast<sockaddr const*>(&cut), 4), -1);
    EXPECT_EQ(errno, EINVAL);
}

} // namespace
