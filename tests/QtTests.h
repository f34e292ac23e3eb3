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

// Behind the class, in its source file.
#define CORVANA_TEST(Class)                                                                        \
    static CTestEntry const g_entryOf##Class(#Class, []() -> QObject* { return new Class; })
