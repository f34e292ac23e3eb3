#pragma once

#include "ui/FileDialogs.h"

#include <functional>

class QIODevice;

/// Asks the user for the name of a file and has it written. Under that name there is the whole new
/// file or what was there before, nothing else; a file that exists is replaced only when the user
/// says so. write returns whether it wrote all. False when the user gave up, or was told that the
/// file could not be written and why. The file is for its owner alone.
bool SaveFile(QWidget* parent, CFileQuestion const& question, QString const& extension,
    std::function<bool(QIODevice&)> const& write);

/// A text as a part of the name of a file: without what separates folders.
QString FileNameOf(QString const& title);
