#include "doc/CorvanaDoc.h"

#include "doc/AppCommands.h"
#include "doc/DocViews.h"
#include "store/sets/DAOStn.h"
#include "store/sets/SetCloser.h"
#include "ui/Convert.h"
#include "ui/MemberIDDlg.h"
#include "ui/Messages.h"
#include "ui/WaitCursor.h"

#include <QStringList>

#include <chrono>

namespace
{

constexpr std::chrono::milliseconds kStartWait{2'000};

/// Whether a file that cannot be opened for that reason has to be replaced.
bool AreContentsGone(DbError error)
{
    return error == DbError::missing || error == DbError::empty || error == DbError::cut
        || error == DbError::foreign || error == DbError::damaged;
}

} // namespace

CCorvanaDoc::CCorvanaDoc(CAppCommands& app)
    : m_app(app)
{
}

CCorvanaDoc::~CCorvanaDoc() = default;

bool CCorvanaDoc::OnNewDocument()
{
    CWaitCursor const wait;
    if (!LoadConfiguration()) {
        return false;
    }
    OpenFiles();
    if (m_app.IsOptionOn(CAppOption::reportServer) && !m_app.StartReportServer()) {
        Tell(Window(), tr("Error: the report server application failed to initialize on this PC."),
            CMessageIcon::exclamation);
    }
    return true;
}

void CCorvanaDoc::OpenFiles()
{
    QStringList names;
    QStringList reasons;
    bool areContentsGone = false;
    for (auto const file : kDataFiles) {
        CDbStatus status;
        if (CDatabaseSession::Get().Open(file, status, kStartWait) == nullptr) {
            names += ToQt(DataFileName(file));
            reasons += ToQt(status.Text());
            areContentsGone = areContentsGone || AreContentsGone(status.Error());
            m_bMembersOpened = m_bMembersOpened && file != DataFile::member;
        }
    }
    if (areContentsGone) {
        reasons += tr("\nClose Corvana and bring back the last backup. The manual tells how, under "
                      "\"When a data file cannot be opened\".");
    }
    if (!names.isEmpty()) {
        Tell(Window(), tr("Error: could not open %1.").arg(names.join(tr(", "))),
            CMessageIcon::exclamation, reasons.join(u'\n'));
    }
}

bool CCorvanaDoc::LoadConfiguration()
{
    // The closers work in the reverse order of opening.
    CSetCloser const closeCenter(m_setCenter);
    if (m_setCenter.OpenSet(true) == 0) {
        return Fail(tr("Error: could not retrieve data from center recordset."), m_setCenter);
    }
    CSetCloser const closeTouch(m_setTouch);
    if (m_setTouch.OpenSet(true) == 0) {
        return Fail(tr("Error: could not retrieve data from touch screen recordset."), m_setTouch);
    }
    CSetCloser const closeDef(m_setDef);
    if (m_setDef.OpenSet(true) == 0) {
        return Fail(tr("Error: could not retrieve data from defaults recordset."), m_setDef);
    }
    CSetCloser const closeBon(m_setBon);
    if (m_setBon.OpenSet(true) == 0) {
        return Fail(tr("Error: could not retrieve data from bonus recordset."), m_setBon);
    }
    CDAOStn stations(nullptr);
    CSetCloser const closeStn(stations);
    auto const count = stations.OpenSet(true);
    if (count == 0) {
        return Fail(tr("Error: could not retrieve data from station recordset."), stations);
    }
    LoadStations(stations, count);
    m_circuit.Load(); // a centre without lift stations has no work weights, which is no fault
    return SetDefaultClass() || Fail(tr("Error: could not set default class."), m_setCat);
}

void CCorvanaDoc::LoadStations(CDAOStn& set, int count)
{
    m_lstStnNames.clear();
    m_lstStnAbbrs.clear();
    for (int row = 0; row < count; ++row) {
        m_lstStnNames.push_back(set.m_strStnName);
        m_lstStnAbbrs.push_back(set.m_strStnAbbr);
        set.Op(CDAOEFSet::opMoveNext);
    }
}

bool CCorvanaDoc::Fail(QString const& text, CDbStatus const& reason)
{
    Tell(Window(), text, CMessageIcon::exclamation, ToQt(reason.Text()));
    return false;
}

bool CCorvanaDoc::SetDefaultClass()
{
    CWaitCursor const wait;
    m_strDefCategory.clear();
    m_strDefCourse.clear();
    m_strDefSection.clear();

    CSetCloser const closeCat(m_setCat);
    if (m_setCat.FindCategories(0) == 0) {
        return false;
    }
    m_strDefCategory = m_setCat.m_strCatName;
    CSetCloser const closeCour(m_setCour);
    if (m_setCour.FindCourses(m_setCat.m_nCatID, 0) > 0) {
        m_strDefCourse = m_setCour.m_strCourName;
        CSetCloser const closeSec(m_setSec);
        if (m_setSec.FindSections(m_setCour.m_nCourID, nullptr) > 0) {
            m_strDefSection = m_setSec.m_strSecName;
        }
    }
    return true;
}

void CCorvanaDoc::StartReportServer()
{
    Tell(Window(),
        m_app.StartReportServer()
            ? tr("Report Server is running on this PC.")
            : tr("Error: the report server application failed to initialize on this PC."));
}

std::int32_t CCorvanaDoc::AskMemberID(bool mustExist)
{
    CMemberIDDlg prompt(Window());
    prompt.m_bMustExist = mustExist;
    return prompt.exec() == QDialog::Accepted ? prompt.m_lMemberID : 0;
}

QWidget* CCorvanaDoc::Window() const
{
    return m_pViews != nullptr ? m_pViews->Window() : nullptr;
}

void CCorvanaDoc::ShowResult(QString const& text)
{
    if (m_pViews != nullptr) {
        m_pViews->ShowResult(text);
    }
}
