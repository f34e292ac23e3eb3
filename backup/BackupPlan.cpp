#include "backup/BackupPlan.h"

#include "platform/qt/Settings.h"
#include "store/services/BackupSet.h"
#include "store/sets/DatabaseSession.h"
#include "ui/Convert.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

#include <algorithm>
#include <cerrno>
#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace
{

constexpr auto kSection = "backup";

/// The data folder, whichever way leads there.
QString DataFolder()
{
    auto const folder = ToQt(CDatabaseSession::Get().DataFolder());
    auto const real = QFileInfo(folder).canonicalFilePath();
    return real.isEmpty() ? QDir::cleanPath(QDir::current().absoluteFilePath(folder)) : real;
}

} // namespace

CBackupPlan CBackupPlan::Load()
{
    CBackupPlan plan;
    auto const chosen = GetProfileText(kSection, "folder");
    plan.isChosen = QDir::isAbsolutePath(chosen);
    plan.folder = FromQt(plan.isChosen ? QDir::cleanPath(chosen) : DataFolder() + u"-backups"_s);
    plan.wasElsewhere = plan.isChosen && GetProfileInt(kSection, "other_disk", 0) != 0;
    plan.keep = std::clamp(GetProfileInt(kSection, "keep", 0), 0, kMostKept);
    return plan;
}

bool CBackupPlan::Choose(std::string const& chosen)
{
    folder = chosen;
    isChosen = true;
    wasElsewhere = !IsOnDataDisk(chosen);
    return WriteProfileText(kSection, "folder", ToQt(chosen))
        && WriteProfileInt(kSection, "other_disk", wasElsewhere ? 1 : 0);
}

bool CBackupPlan::StoreKeep(int sets)
{
    keep = sets;
    return WriteProfileInt(kSection, "keep", sets);
}

std::string CBackupPlan::Prepare() const
{
    auto const tr
        = [](char const* text) { return FromQt(QCoreApplication::translate("BackupPlan", text)); };
    auto const data = DataFolder();
    auto const real = QFileInfo(ToQt(folder)).canonicalFilePath();
    if (real == data || real.startsWith(data + u'/')) {
        return tr("The folder for backups is inside the data folder. Choose one outside of it.");
    }
    if (!isChosen && real.isEmpty() && ::mkdir(folder.c_str(), S_IRWXU) != 0 && errno != EEXIST) {
        return tr("The folder for backups cannot be made. Choose one.");
    }
    if (isChosen && real.isEmpty()) {
        return tr("The folder for backups is not there. Is its disk connected?");
    }
    if (wasElsewhere && IsOnDataDisk(folder)) {
        return tr(
            "The folder for backups was on another disk than the data when it was chosen, and "
            "is on the same one now. Is its disk connected?");
    }
    return {};
}
