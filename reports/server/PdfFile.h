#pragma once

#include "platform/db/Files.h"

#include <QIODevice>

#include <string>

/// A file that is whole under its name or not there at all, and that its owner alone can read. It
/// is written as "NAME.part", which goes with the object unless it is published; what a killed
/// program left of one is replaced.
class CPdfFile : public QIODevice
{
public:
    explicit CPdfFile(std::string path);
    ~CPdfFile() override;

    /// "inUse" when another program writes the same file now.
    CDbStatus Begin();
    /// Puts it on the disk and gives it its name. "exists" rather than replace another, unless that
    /// is asked for.
    CDbStatus Publish(bool replaces = false);
    bool IsWritten() const { return m_nError == 0; } ///< all that came so far

    bool isSequential() const override { return true; }

    /// Takes away what a killed program left of that file, unless somebody still writes it.
    static void RemoveLeftover(std::string const& path);

protected:
    qint64 readData(char*, qint64) override { return -1; }
    qint64 writeData(char const* data, qint64 size) override;

private:
    CDbStatus Failure(int error) const;
    bool IsOwnPart() const;

    std::string const m_strPath;
    std::string const m_strPart;
    CFileHandle m_file;
    int m_nError = 0; ///< the system's, of the first write that failed
};
