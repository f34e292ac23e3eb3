#include "store/text/DataFileWriter.h"

#include "store/sets/DAOFileSet.h"
#include "store/text/Crc32C.h"

#include <array>
#include <cctype>
#include <cerrno>
#include <fcntl.h>
#include <string_view>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{

constexpr std::size_t kBuffer = std::size_t(1) << 20U;

/// Whether an open file is empty or begins with a record of ours.
bool IsDataFile(int descriptor)
{
    std::array<char, 4> head = {};
    auto const size = ::pread(descriptor, head.data(), head.size(), 0);
    return size == 0
        || (size == static_cast<ssize_t>(head.size())
            && std::isupper(static_cast<unsigned char>(head[0])) != 0
            && std::isupper(static_cast<unsigned char>(head[1])) != 0
            && std::isdigit(static_cast<unsigned char>(head[2])) != 0
            && head[3] == CLineSum::kSeparator);
}

/// Whether the name still leads to the open file.
bool IsNamed(int descriptor, std::string const& path)
{
    struct stat open = {};
    struct stat named = {};
    return ::fstat(descriptor, &open) == 0 && ::lstat(path.c_str(), &named) == 0
        && open.st_dev == named.st_dev && open.st_ino == named.st_ino;
}

int OpenFile(std::string const& path, int flags)
{
    return ::open(path.c_str(), flags | O_RDWR | O_CLOEXEC | O_NOFOLLOW, 0600);
}

} // namespace

// ---- lines

bool CLineSum::Add(CDAOFileSet& set)
{
    return set.Save(m_text);
}

std::streamsize CLineSum::xsputn(char const* bytes, std::streamsize count)
{
    m_nSum = Crc32C(m_nSum, {bytes, static_cast<std::size_t>(count)});
    return m_pTo != nullptr ? m_pTo->sputn(bytes, count) : count;
}

CLineSum::int_type CLineSum::overflow(int_type byte)
{
    char const letter = traits_type::to_char_type(byte);
    return xsputn(&letter, 1) == 1 ? byte : traits_type::eof();
}

// ---- the file

CDataFileWriter::CDataFileWriter(std::string path, std::uint32_t sumBefore)
    : m_strPath(std::move(path))
    , m_strPart(m_strPath + ".part")
    , m_buffer(kBuffer)
    , m_nSumBefore(sumBefore)
    , m_sum(sumBefore, &m_file)
{
    m_file.pubsetbuf(m_buffer.data(), static_cast<std::streamsize>(m_buffer.size()));
}

CDataFileWriter::~CDataFileWriter()
{
    if (m_lock.IsOpen()) {
        ::unlink(m_strPart.c_str());
    }
}

CDbStatus CDataFileWriter::Open()
{
    if (::access(m_strPath.c_str(), F_OK) == 0) {
        return FileFailure("Cannot create", m_strPath, EEXIST);
    }
    if (auto status = MakePart(); !status) {
        return status;
    }
    if (m_file.open(m_strPart, std::ios::out | std::ios::binary) == nullptr) {
        return FileFailure("Cannot write", m_strPath, errno);
    }
    return {};
}

CDbStatus CDataFileWriter::MakePart()
{
    CFileHandle part(OpenFile(m_strPart, O_CREAT | O_EXCL));
    if (!part.IsOpen() && errno == EEXIST) {
        // Of another program that writes it, of one that was killed, or something else altogether.
        CFileHandle const there(OpenFile(m_strPart, 0));
        if (!there.IsOpen() || !IsDataFile(there.Get())) {
            return FileFailure("Cannot create", m_strPart, EEXIST);
        }
        if (::flock(there.Get(), LOCK_EX | LOCK_NB) != 0) {
            return {DbError::inUse, "Another program writes \"" + m_strPath + "\" now."};
        }
        if (IsNamed(there.Get(), m_strPart)) {
            ::unlink(m_strPart.c_str());
        }
        part = CFileHandle(OpenFile(m_strPart, O_CREAT | O_EXCL));
    }
    if (!part.IsOpen() || ::flock(part.Get(), LOCK_EX | LOCK_NB) != 0
        || !IsNamed(part.Get(), m_strPart)) {
        return FileFailure("Cannot create", m_strPath, errno);
    }
    m_lock = std::move(part);
    return {};
}

CDbStatus CDataFileWriter::Write(CDAOFileSet& set)
{
    if (!m_sum.Add(set)) {
        return !set.LastStatus() ? set.LastStatus() : FileFailure("Cannot write", m_strPath, errno);
    }
    ++m_nRecords;
    return {};
}

CDbStatus CDataFileWriter::Sync()
{
    if (m_bSynced) {
        return {};
    }
    errno = 0;
    if (m_file.close() == nullptr) {
        return FileFailure("Cannot write", m_strPath, errno);
    }
    auto status = SyncFile(m_strPart);
    m_bSynced = status.IsOK();
    return status;
}

CDbStatus CDataFileWriter::Check(CDAOFileSet const& set)
{
    if (auto status = Sync(); !status) {
        return status;
    }
    CDbStatus other(
        DbError::damaged, "The file \"" + m_strPath + "\" does not hold what was written into it.");
    std::ifstream file(m_strPart, std::ios::binary);
    auto sum = m_nSumBefore;
    while (file) {
        file.read(m_buffer.data(), static_cast<std::streamsize>(m_buffer.size()));
        sum = Crc32C(sum, {m_buffer.data(), static_cast<std::size_t>(file.gcount())});
    }
    if (!file.eof() || sum != CheckSum()) {
        return other;
    }
    file.clear();
    file.seekg(0);
    return set.Test(file, CLineSum::kSeparator) ? CDbStatus() : set.LastStatus();
}

CDbStatus CDataFileWriter::Publish()
{
    auto status = Sync();
    if (status) {
        status = RenameNoReplace(m_strPart, m_strPath);
    }
    if (status) {
        m_lock.Close(); // it is the file now
        status = SyncFolderOf(m_strPath);
    }
    return status;
}
