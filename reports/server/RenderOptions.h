#pragma once

#include "store/services/ReportJob.h"

#include <string>

/// The words of a report that is made without the queue, as they were given; empty, or 0, when not.
struct CRenderWords
{
    std::string type;
    int member = 0;
    std::string from;
    std::string to;
    std::string category;
    std::string course;
    std::string section;
    std::string status;
    bool memberIDs = false;
    bool allWorkouts = false;
    int classIndex = 0;
};

/// The job that the words mean. What is wrong with them as a sentence; empty when nothing is: a
/// report gets all that its type needs and nothing that it cannot use.
std::string ReadRenderWords(CRenderWords const& words, CReportJob& job);

/// The short names of the types, for the help.
std::string RenderTypes();
