#include "tools/CenterRows.h"

#include "store/sets/AddRow.h"
#include "store/sets/DAOBon.h"
#include "store/sets/DAOCat.h"
#include "store/sets/DAOCenter.h"
#include "store/sets/DAOCour.h"
#include "store/sets/DAODef.h"
#include "store/sets/DAOLiftStn.h"
#include "store/sets/DAOSec.h"
#include "store/sets/DAOStn.h"
#include "store/sets/DAOTouch.h"

namespace
{

template <typename Set, typename Fill>
CDbStatus AddNext(CDbStatus const& before, Fill const& fill)
{
    return before ? AddRow<Set>(fill) : before;
}

CDbStatus AddCenter(CCenterSettings const& settings)
{
    auto status = AddRow<CDAOCenter>([&](CDAOCenter& set) {
        set.m_strCenterName = settings.name;
        set.m_strAddress1 = settings.address1;
        set.m_strAddress2 = settings.address2;
        set.m_strCity = settings.city;
        set.m_strState = settings.state;
        set.m_strZip = settings.zip;
        set.m_strPhone = settings.phone;
        set.m_strEmail = settings.email;
        set.m_strWeb = settings.web;
        set.m_nMinMinutes = settings.minMinutes;
        set.m_nMinCircuits = settings.minCircuits;
    });
    status = AddNext<CDAOTouch>(status, [&](CDAOTouch& set) {
        set.m_clrPanel = settings.panelColor;
        set.m_clrFrame = settings.frameColor;
    });
    return AddNext<CDAODef>(status, [&](CDAODef& set) {
        set.m_nDefGradeStat = settings.gradeStatus;
        set.m_nDefReEvalBonuses = settings.reEvalBonuses;
        set.m_nDefOtherBonuses = settings.otherBonuses;
        set.m_nDefFlags = settings.orientBonus ? CDAODef::kOrientBonus : 0;
    });
}

CDbStatus AddStations(CDbStatus status, CCenterSettings const& settings)
{
    for (auto const& bonus : settings.bonuses) {
        status = AddNext<CDAOBon>(status, [&](CDAOBon& set) {
            set.m_strBonusName = bonus.name;
            set.m_nPoints = bonus.points;
        });
    }
    for (auto const& station : settings.stations) {
        status = AddNext<CDAOStn>(status, [&](CDAOStn& set) {
            set.m_strStnName = station.name;
            set.m_strStnAbbr = station.abbreviation;
        });
    }
    for (auto const& station : settings.liftStations) {
        status = AddNext<CDAOLiftStn>(status, [&](CDAOLiftStn& set) {
            set.m_strStnName = station.name;
            set.m_dMinLift = station.least;
            set.m_dMaxLift = station.greatest;
        });
    }
    return status;
}

/// Numbers everything from 1 on, in the order of the settings.
CDbStatus AddCatalogue(CDbStatus status, CCenterSettings const& settings)
{
    std::int32_t categoryID = 0;
    std::int32_t courseID = 0;
    std::int32_t sectionID = 0;
    for (auto const& category : settings.categories) {
        status = AddNext<CDAOCat>(status, [&](CDAOCat& set) {
            set.m_nCatID = ++categoryID;
            set.m_strCatName = category.name;
        });
        for (auto const& course : category.courses) {
            status = AddNext<CDAOCour>(status, [&](CDAOCour& set) {
                set.m_nCourID = ++courseID;
                set.m_nCourCatID = categoryID;
                set.m_strCourName = course.name;
            });
            for (auto const& section : course.sections) {
                status = AddNext<CDAOSec>(status, [&](CDAOSec& set) {
                    set.m_nSecID = ++sectionID;
                    set.m_nSecCourID = courseID;
                    set.m_strSecName = section;
                });
            }
        }
    }
    return status;
}

CDbStatus AddPassword(std::string const& password)
{
    CDAOCenter center;
    return center.SetPassword(password) ? CDbStatus() : PasswordFailure(center.LastStatus());
}

} // namespace

CDbStatus PasswordFailure(CDbStatus const& stored)
{
    return stored ? CDbStatus(DbError::failed,
               "The password could not be stored: it must be UTF-8 text of at least 8 letters, and "
               "it takes 64 MB of memory to make its hash.")
                  : stored;
}

CDbStatus WriteCenterRows(CCenterSettings const& settings, std::string const& password)
{
    CDbStatus status;
    auto* const database = CDatabaseSession::Get().Open(DataFile::center, status);
    if (database == nullptr) {
        return status;
    }
    CTransaction transaction(*database);
    status = transaction.Status();
    if (status) {
        status = AddCatalogue(AddStations(AddCenter(settings), settings), settings);
    }
    if (status) {
        status = AddPassword(password);
    }
    if (status) {
        status = transaction.Commit();
    }
    // The file moves without its log.
    return status ? database->Checkpoint() : status;
}
