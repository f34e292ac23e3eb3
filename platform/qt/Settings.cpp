#include "platform/qt/Settings.h"

#include <QSettings>
#include <QVariant>

using namespace Qt::StringLiterals;

namespace
{

/// The user's own settings; defaults are the program's matter, not those of files that an
/// administrator may have left for all users.
class CUserSettings : public QSettings
{
public:
    CUserSettings()
        : QSettings(NativeFormat, UserScope, u"Halvetta"_s, u"Corvana"_s)
    {
        setFallbacksEnabled(false);
    }
};

QString Key(char const* section, char const* entry)
{
    return QLatin1StringView(section) + u'/' + QLatin1StringView(entry);
}

bool Write(char const* section, char const* entry, QVariant const& value)
{
    CUserSettings settings;
    settings.setValue(Key(section, entry), value);
    settings.sync();
    // What was wrong with the file before it was written stays the status of who has read it.
    return settings.status() == QSettings::NoError
        || (settings.status() == QSettings::FormatError
            && CUserSettings().status() == QSettings::NoError);
}

} // namespace

std::int32_t GetProfileInt(char const* section, char const* entry, std::int32_t defaultValue)
{
    bool isNumber = false;
    int const value = CUserSettings().value(Key(section, entry)).toString().toInt(&isNumber);
    return isNumber ? value : defaultValue;
}

bool WriteProfileInt(char const* section, char const* entry, std::int32_t value)
{
    return Write(section, entry, value);
}

QString GetProfileText(char const* section, char const* entry)
{
    return CUserSettings().value(Key(section, entry)).toString();
}

bool WriteProfileText(char const* section, char const* entry, QString const& text)
{
    return Write(section, entry, text);
}
