#include "reports/server/RenderCommand.h"

#include "store/sets/DatabaseSession.h"

#include <cstdio>
#include <cstdlib>
#include <unistd.h>

namespace
{

int Fail(std::string const& text)
{
    std::fprintf(stderr, "corvrpt: %s\n", text.c_str());
    return EXIT_FAILURE;
}

} // namespace

int RenderReport(COptions const& options)
{
    if (!options.replaces && ::access(options.pdf.c_str(), F_OK) == 0) {
        return Fail("The file is there already. --replace replaces it.");
    }
    CReport report;
    auto made = ReadReport(options.job, {}, report);
    CDatabaseSession::Get().ShutDown();
    bool isOwn = true;
    if (made.IsMade()) {
        auto const isFree = [&] {
            isOwn = options.replaces || ::access(options.pdf.c_str(), F_OK) != 0;
            return isOwn;
        };
        made = PrintToFile(report, {options.pdf, options.Paper(), options.replaces, isFree}, {});
    }
    if (!isOwn) {
        return Fail("The file has come into being meanwhile, and stays as it is.");
    }
    return made.IsMade() ? EXIT_SUCCESS : Fail(made.reason);
}
