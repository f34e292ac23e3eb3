#pragma once

class QObject;

/// Names a class of cases to the program of its folder, which runs one class at a time: the one
/// named as its first argument, in an application with windows.
class CTestEntry
{
public:
    using Make = QObject* (*)();

    CTestEntry(char const* name, Make make);
};

/// Behind the class, in its source file: static CTestEntryOf<PromptsTest> const g_entry;
template <typename Test>
class CTestEntryOf : public CTestEntry
{
public:
    CTestEntryOf()
        : CTestEntry(Test::staticMetaObject.className(), []() -> QObject* { return new Test; })
    {
    }
};
