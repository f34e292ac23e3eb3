#include "tools/Password.h"

#include "platform/db/Files.h"
#include "store/services/Password.h"
#include "tools/Printable.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <iostream>
#include <sys/stat.h>
#include <termios.h>
#include <unistd.h>

namespace
{

constexpr char kInterrupt = '\x03';

/// Keeps what is typed from being shown. Ctrl+C becomes an ordinary letter that ends the line, so
/// that the program never dies with the terminal left mute.
class CQuietTerminal
{
public:
    explicit CQuietTerminal(int terminal)
        : m_nTerminal(terminal)
        , m_bQuiet(::tcgetattr(terminal, &m_before) == 0)
    {
        if (m_bQuiet) {
            auto quiet = m_before;
            quiet.c_lflag &= ~static_cast<tcflag_t>(ECHO | ISIG);
            quiet.c_cc[VEOL] = kInterrupt;
            m_bQuiet = ::tcsetattr(terminal, TCSAFLUSH, &quiet) == 0;
        }
    }
    ~CQuietTerminal()
    {
        if (m_bQuiet) {
            ::tcsetattr(m_nTerminal, TCSAFLUSH, &m_before);
        }
    }
    CQuietTerminal(CQuietTerminal const&) = delete;
    CQuietTerminal& operator=(CQuietTerminal const&) = delete;

    bool IsQuiet() const { return m_bQuiet; }

private:
    int m_nTerminal;
    termios m_before = {};
    bool m_bQuiet;
};

/// Reads one line without its end. False when there is none; a line too long for a password stays
/// one letter too long.
bool ReadLine(CFileHandle const& file, std::string& line)
{
    line.clear();
    char letter = 0;
    ssize_t count = 0;
    while (line.size() <= kMostPasswordBytes && (count = ::read(file.Get(), &letter, 1)) == 1
        && letter != '\n') {
        line += letter;
        if (letter == kInterrupt) {
            break;
        }
    }
    return count == 1;
}

void Say(CFileHandle const& terminal, std::string_view text)
{
    if (::write(terminal.Get(), text.data(), text.size()) < 0) {
        // Then the user sees no question, and the reading that follows fails.
    }
}

CDbStatus ReadTyped(CFileHandle const& terminal, std::string_view question, CSecret& password)
{
    Say(terminal, question);
    bool const read = ReadLine(terminal, password.Text());
    Say(terminal, "\n");
    if (!read || password.Text().ends_with(kInterrupt)) {
        return {DbError::failed, "No password was entered."};
    }
    return {};
}

CDbStatus AskTwice(CSecret& password)
{
    CFileHandle const terminal(::open("/dev/tty", O_RDWR | O_CLOEXEC | O_NOCTTY));
    if (!terminal.IsOpen()) {
        return {DbError::failed,
            "There is no terminal to ask for the password at: use --password-file."};
    }
    CQuietTerminal const quiet(terminal.Get());
    if (!quiet.IsQuiet()) {
        return {DbError::failed, "The terminal would show the password: use --password-file."};
    }
    CSecret again;
    again.Reserve(kMostPasswordBytes + 1);
    auto status = ReadTyped(terminal, "New administration password: ", password);
    if (status) {
        status = ReadTyped(terminal, "The same password again: ", again);
    }
    if (status && password.Text() != again.Text()) {
        return {DbError::failed, "The two passwords are not the same."};
    }
    return status;
}

CDbStatus ReadFirstLine(std::string const& path, CSecret& password)
{
    CFileHandle const file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY));
    struct stat info = {};
    if (!file.IsOpen() || ::fstat(file.Get(), &info) != 0) {
        return FileFailure("Cannot read the password from", path, errno);
    }
    if (S_ISDIR(info.st_mode)) {
        return FileFailure("Cannot read the password from", path, EISDIR);
    }
    if (S_ISREG(info.st_mode) && (info.st_mode & (S_IRWXG | S_IRWXO)) != 0) {
        std::cerr << "corvana-db: warning: other users can read \"" << path << "\".\n";
    }
    ReadLine(file, password.Text());
    if (password.Text().ends_with('\r')) {
        password.Text().pop_back();
    }
    return {};
}

CDbStatus Judge(std::string const& password)
{
    if (password.size() < kLeastPasswordCharacters) {
        return {DbError::failed,
            "The password is too short: it needs at least "
                + std::to_string(kLeastPasswordCharacters) + " letters."};
    }
    if (password.size() > kMostPasswordBytes) {
        return {DbError::failed,
            "The password is too long: it can have at most " + std::to_string(kMostPasswordBytes)
                + " bytes."};
    }
    CSecret shown;
    shown.Text() = Printable(password);
    if (shown.Text() != password) {
        return {DbError::failed, "The password must not contain control characters."};
    }
    return {};
}

} // namespace

CSecret::~CSecret()
{
    m_strText.resize(m_strText.capacity()); // the whole of the memory, not only the last text
    ::explicit_bzero(m_strText.data(), m_strText.size());
}

CDbStatus GetPassword(std::string const& file, CSecret& password)
{
    password.Reserve(kMostPasswordBytes + 1);
    auto const status = file.empty() ? AskTwice(password) : ReadFirstLine(file, password);
    return status ? Judge(password.Text()) : status;
}
