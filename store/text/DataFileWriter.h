#pragma once

#include "platform/db/Files.h"
#include "store/text/Text.h"

#include <cstdint>
#include <fstream>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

class CDAOFileSet;

/// Sums up the lines of records, and passes them on to a file if there is one.
class CLineSum : public std::streambuf
{
public:
    /// The sum goes on from that of lines before.
    explicit CLineSum(std::uint32_t before, std::streambuf* to = nullptr)
        : m_pTo(to)
        , m_nSum(before)
        , m_stream(this)
        , m_text(&m_stream, kSeparator)
    {
    }

    static constexpr char kSeparator = '|';

    /// Adds the line of the current row of a set; false as CDAOFileSet::Save.
    bool Add(CDAOFileSet& set);
    std::uint32_t Sum() const { return m_nSum; }

protected:
    std::streamsize xsputn(char const* bytes, std::streamsize count) override;
    int_type overflow(int_type byte) override;

private:
    std::streambuf* m_pTo;
    std::uint32_t m_nSum;
    std::ostream m_stream;
    CText m_text;
};

/// Writes the records of open sets into a data file. Under the file's name there is the whole file
/// or none: it is written as "NAME.part", for its owner alone, put on the disk, and only then gets
/// its name, which no other file may have. What a killed program has left of a part is taken away
/// by the next one that writes the same file; two never write it at the same time.
class CDataFileWriter
{
public:
    /// The check sum goes on from that of records written before.
    explicit CDataFileWriter(std::string path, std::uint32_t sumBefore = 0);
    ~CDataFileWriter(); ///< takes away what did not get its name
    CDataFileWriter(CDataFileWriter const&) = delete;
    CDataFileWriter& operator=(CDataFileWriter const&) = delete;

    /// Makes the part. "exists" when there is a file of the name, "inUse" when another program
    /// writes it.
    CDbStatus Open();
    /// Adds the current row of a set, as it is stored; "gone" when there is none any more.
    CDbStatus Write(CDAOFileSet& set);
    /// Puts the part on the disk and reads it back: it must be, byte for byte, what was written,
    /// and the set must find it right. Costs two more passes over the file.
    CDbStatus Check(CDAOFileSet const& set);
    /// Gives the file its name, unless there is one of that name by now, and waits until that is on
    /// the disk too.
    CDbStatus Publish();

    int Records() const { return m_nRecords; }
    std::uint32_t CheckSum() const { return m_sum.Sum(); } ///< of all lines

private:
    CDbStatus MakePart();
    CDbStatus Sync();

    std::string const m_strPath;
    std::string const m_strPart;
    CFileHandle m_lock; ///< of the part, as long as it has not got its name
    std::vector<char> m_buffer;
    std::filebuf m_file;
    std::uint32_t const m_nSumBefore;
    CLineSum m_sum;
    int m_nRecords = 0;
    bool m_bSynced = false;
};
