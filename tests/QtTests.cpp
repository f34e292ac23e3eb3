#include "tests/QtTests.h"

#include <QApplication>
#include <QTest>

#include <map>
#include <memory>
#include <string_view>

namespace
{

std::map<std::string_view, CTestEntry::Make>& Entries()
{
    static std::map<std::string_view, CTestEntry::Make> entries;
    return entries;
}

} // namespace

CTestEntry::CTestEntry(char const* name, Make make)
{
    Entries()[name] = make;
}

int main(int argc, char** argv)
{
    auto const entry = Entries().find(argc > 1 ? argv[1] : "");
    if (entry == Entries().end()) {
        qCritical("the first argument must name one of:");
        for (auto const& [name, make] : Entries()) {
            qCritical("  %s", name.data());
        }
        return 1;
    }
    QApplication const app(argc, argv);
    std::unique_ptr<QObject> const test(entry->second());
    argv[1] = argv[0];
    return QTest::qExec(test.get(), argc - 1, argv + 1);
}
