#pragma once

#include <QObject>

#include <map>
#include <string_view>

/// What makes the classes of cases of a folder's program, by their names. It runs one class at a
/// time, the one named as its first argument, in an application with windows.
std::map<std::string_view, QObject* (*)()>& TestEntries();

/// Behind the class, in its source file: static CTestEntryOf<PromptsTest> const g_entry;
template <typename Test>
class CTestEntryOf
{
public:
    CTestEntryOf()
    {
        TestEntries()[Test::staticMetaObject.className()] = []() -> QObject* { return new Test; };
    }
};
