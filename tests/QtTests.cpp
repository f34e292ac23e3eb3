#include "tests/QtTests.h"

#include "tests/TempFolder.h"

#include <QApplication>
#include <QTest>

#include <memory>

std::map<std::string_view, QObject* (*)()>& TestEntries()
{
    static std::map<std::string_view, QObject* (*)()> entries;
    return entries;
}

int main(int argc, char** argv)
{
    auto const entry = TestEntries().find(argc > 1 ? argv[1] : "");
    if (entry == TestEntries().end()) {
        qCritical("the first argument must name one of:");
        for (auto const& [name, make] : TestEntries()) {
            qCritical("  %s", name.data());
        }
        return 1;
    }
    CTempFolder const settings; // not those of whoever runs the tests
    qputenv("XDG_CONFIG_HOME", settings.Path().c_str());
    QApplication const app(argc, argv);
    std::unique_ptr<QObject> const test(entry->second());
    argv[1] = argv[0];
    return QTest::qExec(test.get(), argc - 1, argv + 1);
}
