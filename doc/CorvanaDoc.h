#pragma once

#include "store/fitness/Circuit.h"
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
#include "store/sets/DAOEval.h"
#include "store/sets/DAOEvalBodyComp.h"
#include "store/sets/DAOMem.h"
#include "store/sets/DAOMsg.h"
#include "store/sets/DAOProf.h"
#include "store/sets/DAOReport.h"
#include "store/sets/DAOSec.h"
#include "store/sets/DAOSmEval.h"
#include "store/sets/DAOSmMem.h"
#include "store/sets/DAOTouch.h"
#include "store/sets/DAOWk.h"

#include <QCoreApplication>
#include <QString>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

class CAppCommands;
struct CClassLists;
class CDAOStn;
class CDocViews;
class CQuickStatsDlg;
class QComboBox;
class QWidget;
struct CReportJob;

/// One of a member's classes as the user chose it, or one of the two entries that are none.
struct CClassChoice
{
    std::uint8_t m_nClassIndex; ///< CDAOCls::kUnknown and CDAOCls::kAllClasses included
    std::string m_strClass; ///< the text of the entry
};

/// The kinds of record that are copied, restored and deleted as a whole.
enum class CRecordKind
{
    members,
    workouts,
    evaluations,
    bodyComps
};

/// What is done with records that are written to a data file.
enum class CTransfer
{
    backup,
    archive ///< deletes them afterwards
};

/// The one document of the program. It owns a record set of every kind and the configuration of
/// the centre from start to exit, and has an operation for everything that menus, buttons, lists
/// and the tree call. An operation is defined in the folder whose matter it is.
class CCorvanaDoc
{
    Q_DECLARE_TR_FUNCTIONS(CCorvanaDoc)
public:
    explicit CCorvanaDoc(CAppCommands& app);
    ~CCorvanaDoc();
    CCorvanaDoc(CCorvanaDoc const&) = delete;
    CCorvanaDoc& operator=(CCorvanaDoc const&) = delete;

    /// Who is told what happens. Not owned; null as long as there is no main window.
    void SetViews(CDocViews* views) { m_pViews = views; }

    /// Loads the configuration of the centre, opens the other files and starts the report server if
    /// the user wants it. Returns whether there is a configuration. The user has been told what
    /// could not be read.
    bool OnNewDocument();

    /// False when the file of the members could not be opened at the start.
    bool HasMembers() const { return m_bMembersOpened; }

    /// Makes the first class of the catalogue the default class. False when there is no category.
    bool SetDefaultClass();

    // Members

    /// Edits a member, or with ID 0 the one whose ID is entered; adds one when no member has the
    /// ID. True when saved. What could not be saved is told, and the form stays open.
    bool EditMember(std::int32_t memberID);
    /// Asks for the ID of a member and edits that one.
    void EditExistingMember();
    /// Deletes a member with all that hangs on it after asking, or with ID 0 the one whose ID is
    /// entered; true when deleted. Without an expiration text the question shows the stored date.
    bool DeleteMember(std::int32_t memberID, QString const& expiration);
    /// Asks which members to look for and shows those that are found.
    void FindMembers();

    // Records of members. With a set, AddEdit... edits the row on which it stands; without one it
    // adds. True when something was stored.

    bool AddEditWorkout(CDAOWk* set);
    /// Deletes the row on which the set stands after asking; true when it is gone.
    bool DeleteWorkout(CDAOWk& set);
    /// By the check-in as the member tree shows it; false also when there is no such workout.
    bool EditWorkoutAt(std::int32_t memberID, QString const& checkIn);
    bool DeleteWorkoutAt(std::int32_t memberID, QString const& checkIn);
    void ShowMemberWorkouts();
    void FindWorkouts();
    bool AddEditEvaluation(CDAOEval* set);
    bool DeleteEvaluation(CDAOEval const& set);
    bool EditEvaluationAt(std::int32_t memberID, QString const& date);
    bool DeleteEvaluationAt(std::int32_t memberID, QString const& date);
    void ShowMemberEvaluations();
    bool AddEditBodyComp(CDAOBodyComp* set);
    bool DeleteBodyComp(CDAOBodyComp& set);
    bool EditBodyCompAt(std::int32_t memberID, QString const& date);
    bool DeleteBodyCompAt(std::int32_t memberID, QString const& date);
    void ShowMemberBodyComps();

    // Class pickers. Which list narrows which is stated with CClassLists.

    /// Fills the lists for a fresh choice: all categories, with an empty entry that is selected;
    /// course and section are hidden.
    void FillCategoryList(CClassLists const& lists);
    /// Fills the courses of the selected category and the sections of its first course.
    void FillCourseList(CClassLists const& lists);
    /// Fills the sections of the selected course.
    void FillSectionList(CClassLists const& lists);
    /// Fills all three and selects a stored class, also one that the catalogue does not have.
    void FillClassLists(CClassLists const& lists, std::string const& category,
        std::string const& course, std::string const& section);
    /// Fills a list with the member's classes, each with its class index as data, and before them,
    /// if wanted, the entries of index 99 and of index 101. Selects the given index.
    void FillMemberClassList(std::int32_t memberID, std::uint8_t classIndex, QComboBox& list,
        bool withUnknown, bool withAll);
    /// Asks which class of a member a command is for: one of them, all of them, or the records of
    /// deleted ones. Nothing when the user cancels, or is told that the classes cannot be read.
    std::optional<CClassChoice> AskMemberClass(std::int32_t memberID);
    /// Deletes a class of a member at once, after asking, with its records or without them; true
    /// when it was deleted.
    bool DeleteMemberClass(std::int32_t memberID, std::uint8_t classIndex,
        std::string const& category, std::string const& course, std::string const& section);

    // Members found by a search, from their list. What is changed is asked first, and how many were
    // changed is shown.

    /// Replaces the class that the search found, of a CDAOMemCls; true when it was begun, so that
    /// the members are to be found anew.
    bool UpdateClass(CDAOMem& members);
    /// Rewrites enrolment and status; true when it was begun.
    bool UpdateEnrollment(CDAOMem& members);
    /// Stores a message for the next check-in.
    void PostMessages(CDAOMem& members);
    void PrintLetters(CDAOMem& members);
    void PrintLabels(CDAOMem& members);

    // Data files and whole selections

    /// Writes the rows of an open set into a file that the user chooses, and with archive deletes
    /// exactly those, after asking for the password and asking again. How many there were.
    int BackupRecords(CDAOFileSet& set, CTransfer mode);
    /// The same into a file of that name, without a question but those for further disks: a path
    /// that begins with the letter a takes 5000 records a disk. What goes wrong is told, and
    /// nothing is deleted then.
    int WriteDataFile(CDAOFileSet& set, CTransfer mode, QString const& path);
    /// Asks what to restore from which file, and restores it. How many records.
    int RestoreRecords(CDAOFileSet& set);
    /// Restores the records of a member, with 0 of all, from a file. All of it or, after a message,
    /// nothing.
    int ReadDataFile(CDAOFileSet& set, std::int32_t memberID, bool keepExisting,
        QString const& path, char separator);
    /// Deletes the rows of an open set up to the first one without a member, in one transaction;
    /// with confirm after the password and a question. How many were deleted.
    int DeleteRecords(CDAOEFSet& set, bool confirm);

    // Whole tables

    void BackUpAll(CRecordKind kind);
    void ArchiveAll(CRecordKind kind);
    void RestoreAll(CRecordKind kind);
    void DeleteAll(CRecordKind kind);
    /// After a warning deletes the check-ins and the queued reports, compacts the four files and
    /// ends the program. A file that could not be compacted is told, and left as it was.
    void CompactDatabase();

    // Reports and figures

    /// Asks what a report of the type (0 to 13) needs and adds a job to the report queue. True when
    /// the job was added; the user is told when it could not be.
    bool QueueReport(int type);
    /// Adds a job to the report queue. Shows that it was added, or tells why it was not.
    bool AddReport(CReportJob const& job);
    /// Shows the totals of the centre and who is checked in.
    void ShowQuickStats();
    /// Counts what the dialog shows, and says in it what could not be counted.
    void CompileStats(CQuickStatsDlg& dialog);
    /// Asks for the password until it is right or the user gives up; true when it was right.
    bool VerifyPassword();
    /// Starts the report server and tells the user whether one runs.
    void StartReportServer();

    // What the operations of all folders use.

    /// The window that dialogs belong to; null without a main window.
    QWidget* Window() const;
    /// Who shows the members; null without a main window.
    CDocViews* Views() const { return m_pViews; }
    /// Shows the result of an operation where it does not interrupt the user.
    void ShowResult(QString const& text);
    /// Tells the failure, with the engine's reason if there is one; always false.
    bool Fail(QString const& text, CDbStatus const& reason);
    bool Fail(QString const& text, CDAOEFSet const& set) { return Fail(text, set.LastStatus()); }
    /// Asks for a member ID; 0 when the user cancels.
    std::int32_t AskMemberID(bool mustExist);

    // Record sets, made in this order and destroyed in the reverse one. Those of the centre keep
    // the values that OnNewDocument read.
    CDAOCenter m_setCenter;
    CDAODef m_setDef;
    CDAOBon m_setBon;
    CDAOCat m_setCat;
    CDAOCour m_setCour;
    CDAOSec m_setSec;
    CDAOTouch m_setTouch;
    CDAOChkIn m_setChkIn;
    CDAOMem m_setMem;
    CDAOSmMem m_setSmMem;
    CDAOProf m_setProf;
    CDAOEnr m_setEnr;
    CDAOCls m_setCls;
    CDAOMsg m_setMsg;
    CDAOEval m_setEval;
    CDAOSmEval m_setSmEval;
    CDAOCirc m_setCirc;
    CDAOEvalBodyComp m_setEvalBodyComp;
    CDAOWk m_setWk;
    CDAOBodyComp m_setBodyComp;
    CDAOReport m_setReport;

    // Stations in the order of their table; the two lists are of one length.
    std::vector<std::string> m_lstStnNames;
    std::vector<std::string> m_lstStnAbbrs;

    CCircuit m_circuit; ///< calculates the work weights of evaluations

    std::string m_strDefCategory; ///< default class; parts that the catalogue lacks are empty
    std::string m_strDefCourse;
    std::string m_strDefSection;

    std::uint8_t m_nEvalClassSel = 101; ///< class index of the evaluation selection, 101 for all
    std::int32_t m_nEvalMemberSel = 0; ///< member ID of the evaluation selection

private:
    bool LoadConfiguration();
    /// Tells now, once, what would else be met in the middle of work.
    void OpenFiles();
    void LoadStations(CDAOStn& set, int count);

    CAppCommands& m_app;
    CDocViews* m_pViews = nullptr;
    bool m_bMembersOpened = true;
};
