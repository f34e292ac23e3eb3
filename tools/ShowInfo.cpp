#include "tools/ShowInfo.h"

#include "store/sets/DAOBodyComp.h"
#include "store/sets/DAOBon.h"
#include "store/sets/DAOCat.h"
#include "store/sets/DAOCenter.h"
#include "store/sets/DAOChkIn.h"
#include "store/sets/DAOCirc.h"
#include "store/sets/DAOCls.h"
#include "store/sets/DAOCour.h"
#include "store/sets/DAODef.h"
#include "store/sets/DAOEnr.h"
#include "store/sets/DAOEvalBodyComp.h"
#include "store/sets/DAOLiftStn.h"
#include "store/sets/DAOMsg.h"
#include "store/sets/DAOProf.h"
#include "store/sets/DAOReport.h"
#include "store/sets/DAOSec.h"
#include "store/sets/DAOSmEval.h"
#include "store/sets/DAOSmMem.h"
#include "store/sets/DAOStn.h"
#include "store/sets/DAOTouch.h"
#include "store/sets/DAOWk.h"
#include "tools/Printable.h"
#include "tools/ShowJobs.h"

#include <array>
#include <filesystem>
#include <iostream>

namespace
{

std::array const kTables
    = {CDAOChkIn::GetThisClass(), CDAOReport::GetThisClass(), CDAOCenter::GetThisClass(),
        CDAODef::GetThisClass(), CDAOBon::GetThisClass(), CDAOTouch::GetThisClass(),
        CDAOStn::GetThisClass(), CDAOLiftStn::GetThisClass(), CDAOCat::GetThisClass(),
        CDAOCour::GetThisClass(), CDAOSec::GetThisClass(), CDAOSmMem::GetThisClass(),
        CDAOProf::GetThisClass(), CDAOEnr::GetThisClass(), CDAOCls::GetThisClass(),
        CDAOMsg::GetThisClass(), CDAOWk::GetThisClass(), CDAOSmEval::GetThisClass(),
        CDAOEvalBodyComp::GetThisClass(), CDAOCirc::GetThisClass(), CDAOBodyComp::GetThisClass()};

bool Fail(CDbStatus const& status)
{
    std::cout << std::flush;
    std::cerr << "corvana-db: " << status.Text() << "\n";
    return false;
}

bool ShowFile(DataFile file)
{
    auto& session = CDatabaseSession::Get();
    CDbStatus status;
    auto* const database = session.Open(file, status);
    if (database == nullptr) {
        return Fail(status);
    }
    std::error_code failed;
    auto const size = std::filesystem::file_size(session.PathOf(file), failed);
    std::cout << session.PathOf(file) << ": " << (failed ? 0 : size) << " bytes, version "
              << DataFileSchema(file).Version() << "\n";
    for (auto const* const table : kTables) {
        if (table->file != file) {
            continue;
        }
        CRowBlock rows;
        status = database->Query("SELECT count(*) FROM " + std::string(table->table), {}, rows);
        if (!status) {
            return Fail(status);
        }
        auto const count = rows.Row(0).Cell(0).integerValue;
        std::cout << "    " << table->table << ": " << count << (count == 1 ? " row\n" : " rows\n");
    }
    return true;
}

bool ShowCenter()
{
    CDAOCenter center;
    int const count = center.OpenSet(true);
    if (!center.LastStatus()) {
        return Fail(center.LastStatus());
    }
    std::cout << "Centre: " << (count == 0 ? "none" : Printable(center.m_strCenterName)) << "\n";
    return true;
}

} // namespace

bool ShowInfo()
{
    bool well = true;
    std::array<bool, kDataFiles.size()> readable = {};
    for (auto const file : kDataFiles) {
        auto const shown = ShowFile(file);
        readable[static_cast<std::size_t>(file)] = shown;
        well = well && shown;
    }
    if (readable[static_cast<std::size_t>(DataFile::center)]) {
        well = ShowCenter() && well;
    }
    if (readable[static_cast<std::size_t>(DataFile::report)]) {
        auto const status = ShowJobs();
        well = (status || Fail(status)) && well;
    }
    CDatabaseSession::Get().ShutDown();
    return well;
}
