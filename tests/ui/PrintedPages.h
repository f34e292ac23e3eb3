#pragma once

#include "platform/qt/Printers.h"
#include "tests/TempFolder.h"

#include <QProcess>
#include <QRectF>
#include <QStringList>

#include <utility>

/// The default printer while it lives, one that prints into a PDF file; and what it printed.
class CPrintedPages
{
public:
    explicit CPrintedPages(QString const& path = {})
        : m_strPath(path.isEmpty()
                ? QString::fromStdString((m_folder.Path() / "printed.pdf").string())
                : path)
        , m_before(SetPrinterMaker([this] {
            auto printer = std::make_unique<QPrinter>(QPrinter::HighResolution);
            printer->setOutputFormat(QPrinter::PdfFormat);
            printer->setOutputFileName(m_strPath);
            return printer;
        }))
    {
    }
    ~CPrintedPages() { SetPrinterMaker(m_before); }
    CPrintedPages(CPrintedPages const&) = delete;
    CPrintedPages& operator=(CPrintedPages const&) = delete;

    /// The lines of each page that are not empty, several blanks as one; none when nothing was
    /// printed.
    QList<QStringList> Lines() const { return LinesOf(m_strPath); }
    static QList<QStringList> LinesOf(QString const& path)
    {
        QList<QStringList> pages;
        auto text = QString::fromUtf8(Read({QStringLiteral("-layout"), path}));
        for (auto const& page : text.split(u'\f', Qt::SkipEmptyParts)) {
            QStringList lines;
            for (auto const& line : page.split(u'\n', Qt::SkipEmptyParts)) {
                lines += line.simplified();
            }
            pages += lines;
        }
        return pages;
    }
    /// Each word and where it stands, in points.
    QList<std::pair<QString, QRectF>> Boxes() const { return BoxesOf(m_strPath); }
    static QList<std::pair<QString, QRectF>> BoxesOf(QString const& path)
    {
        QList<std::pair<QString, QRectF>> boxes;
        auto const text = QString::fromUtf8(Read({QStringLiteral("-bbox"), path}));
        for (auto const& line : text.split(u'\n')) {
            auto const part = line.split(u'"');
            if (line.contains(QStringLiteral("<word"))) {
                boxes += {part.constLast().mid(1).section(u'<', 0, 0),
                    QRectF(QPointF(part[1].toDouble(), part[3].toDouble()),
                        QPointF(part[5].toDouble(), part[7].toDouble()))};
            }
        }
        return boxes;
    }

private:
    static QByteArray Read(QStringList const& options)
    {
        QProcess reader;
        reader.start(QStringLiteral("pdftotext"), options + QStringList{QStringLiteral("-")});
        reader.waitForFinished();
        return reader.readAllStandardOutput();
    }

    CTempFolder m_folder;
    QString const m_strPath;
    CPrinterMaker const m_before;
};
