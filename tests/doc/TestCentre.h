#pragma once

#include "store/sets/DatabaseSession.h"
#include "tests/TempFolder.h"

#include <QtGlobal>

#include <string_view>

/// A small centre in real files, in a folder of its own, and the session of this process on it.
class CTestCentre
{
public:
    CTestCentre()
    {
        for (auto const file : kDataFiles) {
            auto const status
                = CreateDatabase(m_folder.Path() / DataFileName(file), DataFileSchema(file));
            if (!status) {
                qFatal("%s", status.Text().c_str());
            }
        }
        CDatabaseSession::Get().SetDataFolder(m_folder.Path());
        Run("INSERT INTO center (name, address1, address2, city, state, zip, phone, email, web,"
            " min_minutes, min_circuits) VALUES ('Riverside Fitness Center', '12 Harbor Street',"
            " 'Second Floor', 'Springfield', 'IL', '62701', '(217) 555-0142',"
            " 'desk@riverside.example', 'www.riverside.example', 20, 1)");
        Run("INSERT INTO touch (panel_color, frame_color) VALUES (0xF2E6D9, 0x784A16)");
        Run("INSERT INTO defaults (grade_status, re_eval_bonuses, other_bonuses, flags)"
            " VALUES (1, 0, 0, 0)");
        Run("INSERT INTO bonuses (name, points) VALUES ('Orientation', 5)");
        Run("INSERT INTO stations (name, abbreviation) VALUES ('Leg Press', 'LP'),"
            " ('Chest Press', 'CP'), ('Rowing', 'RW')");
        Run("INSERT INTO categories (number, name) VALUES (7, 'Staff'), (3, 'Students')");
        Run("INSERT INTO courses (number, category, name) VALUES (4, 3, 'PE 101'),"
            " (9, 7, 'Wellness')");
        Run("INSERT INTO sections (number, course, name) VALUES (2, 9, 'Morning')");
    }
    ~CTestCentre() { CDatabaseSession::Get().ShutDown(); }

    std::filesystem::path const& Folder() const { return m_folder.Path(); }

    /// Runs SQL on a file, as another program of the suite would.
    static void Run(std::string_view sql, DataFile file = DataFile::center)
    {
        CDbStatus status;
        auto* const database = CDatabaseSession::Get().Open(file, status);
        std::int64_t changed = 0;
        if (database != nullptr) {
            status = database->Execute(sql, {}, changed);
        }
        if (!status) {
            qFatal("%s", status.Text().c_str());
        }
    }

private:
    CTempFolder m_folder;
};
