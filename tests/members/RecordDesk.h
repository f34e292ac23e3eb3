#pragma once

#include "doc/TreeNode.h"
#include "tests/members/MemberDesk.h"
#include "tests/platform/db/Faults.h"
#include "tests/ui/UserSteps.h"

#include <cerrno>

/// What the SQL does to the record while its form is open is replaced only when the user says so.
/// The rows are those that the form may change.
template <typename Rows>
void AsksBeforeReplacing(CTestDesk& desk, QDialog const& form, QString const& record,
    std::string const& sql, bool isDeleted, Rows const& rows)
{
    auto const question
        = (isDeleted ? QStringLiteral("This %1 has been deleted at another place\nsince you opened "
                                      "the form.\nDo you want to add the %1 again? @%2")
                     : QStringLiteral("This %1 has been changed at another place\nsince you opened "
                                      "the form.\nDo you want to replace those changes with yours? "
                                      "@%2"))
              .arg(record, form.focusWidget()->objectName());
    RunOnMembers(sql);
    auto const theirs = rows();
    desk.m_messages.AnswerNext({false, true});
    QCOMPARE(desk.Ok(form), question);
    QCOMPARE(rows(), theirs);
    QCOMPARE(desk.Ok(form), QString()); // asks again
    QCOMPARE(
        desk.m_messages.Messages().constLast().m_question == CQuestion::destroying, !isDeleted);
}

/// OK until it is done, on a disk that is full from a later write on each time.
template <typename Rows>
void SavesOnceThereIsRoom(
    CTestDesk const& desk, QDialog const& form, QString const& record, Rows const& rows)
{
    auto const before = rows();
    auto const refusal
        = QStringLiteral("Error: the %1 was not saved.\nYour entries are still in the form. @%2")
              .arg(record, form.focusWidget()->objectName());
    int nth = 1;
    for (; form.isVisible() && nth < 100; ++nth) {
        Faults::Begin(nth, ENOSPC, true);
        auto const told = desk.Ok(form);
        bool const isFull = Faults::End();
        if (form.isVisible()) {
            QVERIFY(isFull && !desk.m_messages.Messages().constLast().m_strDetail.isEmpty());
            QCOMPARE(told, refusal);
            QCOMPARE(rows(), before);
        }
    }
    QVERIFY(nth > 2);
}

/// A desk whose member 7 has one record of a kind, with the document's commands for the kind, and
/// the scenarios that every kind must pass.
template <auto kAddEdit, auto kEditAt, auto kDeleteAt, auto kShowOfMember>
class CRecordDesk : public CMemberDesk
{
public:
    /// What messages call the kind; its tables, all but the first hanging on that; the record's
    /// date as the member tree shows it, and its node there.
    CRecordDesk(QString one, QStringList tables, QString date, CTreeNode node)
        : m_strOne(std::move(one))
        , m_lstTables(std::move(tables))
        , m_strDate(std::move(date))
        , m_node(node)
    {
    }

    QStringList All() const { return Rows(m_lstTables); }
    bool Add(CDialogUser::Step const& step)
    {
        return Use(m_lstPrompts + QList{step}, [this] { return (m_doc.*kAddEdit)(nullptr); });
    }
    bool EditIt(CDialogUser::Step const& step)
    {
        return Use({step}, [this] { return (m_doc.*kEditAt)(7, m_strDate); });
    }
    bool Delete() { return (m_doc.*kDeleteAt)(7, m_strDate); }

    /// Bounds as "page field least greatest", separated by commas; of whole numbers as in "0 to 5",
    /// as none types a minus there. Beyond them neither OK nor another page is possible.
    void RefusesBeyond(QDialog const& sheet, QString const& bounds) const
    {
        for (auto const& bound : bounds.split(u',')) {
            bool const isWhole = bound.contains(u" to ");
            auto const part = QString(bound).remove(QStringLiteral("to ")).split(u' ');
            auto const text
                = QStringLiteral("Enter %1 between %2 and %3. @%4")
                      .arg(isWhole ? QStringLiteral("an integer") : QStringLiteral("a number"),
                          part[2], part[3], part[1]);
            int const page = part[0].toInt();
            ShowPage(sheet, page);
            for (auto const& [limit, step] : {std::pair(part[2], -0.01), {part[3], 0.01}}) {
                if (!isWhole || step > 0) {
                    auto const beyond = limit.toInt() + (isWhole ? 1 : step);
                    Do(sheet, part[1] + QStringLiteral("=%1 @%2").arg(beyond).arg(page == 0));
                    QCOMPARE(Tabs(sheet).currentIndex(), page);
                    QCOMPARE(Ok(sheet), text);
                }
                Do(sheet, part[1] + u'=' + limit);
            }
        }
    }

    /// After these steps in its form what another program does to the record is not lost.
    void AsksBeforeReplacing(QString const& steps, std::string const& sql)
    {
        QVERIFY(EditIt([&](QDialog& form) {
            Do(form, steps);
            ::AsksBeforeReplacing(*this, form, m_strOne, sql,
                sql == "DELETE FROM " + FromQt(m_lstTables[0]), [this] { return All(); });
        }));
    }

    /// A record comes, changes and goes only as the user wants it, and as a whole. The steps fill
    /// the form of a new one, with an entry last that is nowhere else; the class list of the member
    /// has one class.
    void LosesNothing(QString const& steps)
    {
        auto const before = All();
        QVERIFY(!Use({ClickCancel}, [this] { return (m_doc.*kAddEdit)(nullptr); }));
        QVERIFY(!Add(Steps(steps + QStringLiteral(" Cancel"))));
        QVERIFY(!EditIt(Steps(steps + QStringLiteral(" Cancel"))));
        QVERIFY(!Delete()); // the answer is no
        QCOMPARE(All(), before);
        QCOMPARE(m_views.m_lstTreeCalls, QStringList());
        QVERIFY(EditIt([&](QDialog& form) { SaveOnFullDisk(form, steps); }));
        QVERIFY(Add([&](QDialog& form) { SaveOnFullDisk(form, steps); }));
        CheckShown(2, QStringLiteral("The %1 of member ID 7 was saved."));
        auto const table = FromQt(m_lstTables.last());
        RunOnMembers("ALTER TABLE " + table + " RENAME TO away");
        QVERIFY(!(m_doc.*kEditAt)(7, m_strDate));
        CheckTold(QStringLiteral("Error: the %1 could not be read."));
        RunOnMembers("ALTER TABLE away RENAME TO " + table);
        DeleteFirst();
        ShowByClass();
    }

protected:
    /// Steps in what asks before the form of a new one.
    QList<CDialogUser::Step> m_lstPrompts = {Steps(QStringLiteral("memberIDEdit=7 OK"))};

private:
    void CheckTold(QString const& text) const
    {
        QCOMPARE(m_messages.Texts().constLast(), text.arg(m_strOne));
    }
    void CheckShown(int treeCalls, QString const& result) const
    {
        QCOMPARE(m_views.m_lstTreeCalls,
            QStringList(treeCalls, QStringLiteral("Refresh 7 %1 0").arg(int(m_node))));
        QCOMPARE(m_views.m_lstResults.constLast(), result.arg(m_strOne));
    }

    void SaveOnFullDisk(QDialog const& form, QString const& steps) const
    {
        Do(form, steps);
        auto const entry = u'|' + steps.section(u'=', -1) + u'|';
        auto const before = All().filter(entry).size();
        SavesOnceThereIsRoom(*this, form, m_strOne, [this] { return All(); });
        QCOMPARE(All().filter(entry).size(), before + 1);
    }

    /// Of two records.
    void DeleteFirst()
    {
        auto rows = All();
        m_messages.AnswerNext({true, true});
        Faults::Begin(1, ENOSPC, true);
        QVERIFY(!Delete());
        QVERIFY(Faults::End());
        CheckTold(QStringLiteral("Error: the %1 was not deleted."));
        QCOMPARE(All(), rows);
        QVERIFY(Delete());
        for (qsizetype row = 0; row < rows.size(); ++row) {
            rows.removeAt(row); // the first one in each table
        }
        QCOMPARE(All(), rows);
        CheckTold(QStringLiteral("Are you sure you want to delete the %1\nfor Member ID: 7 dated ")
            + m_strDate.section(u' ', 0, 0) + u'?');
        QCOMPARE(m_messages.Messages().constLast().m_question, CQuestion::destroying);
        // The entry of the tree is stale now, and others are no date at all.
        auto const told = m_messages.Texts().size();
        for (auto const& date : {m_strDate, QStringLiteral("yesterday"), QString()}) {
            QVERIFY(!(m_doc.*kEditAt)(7, date));
            QVERIFY(!(m_doc.*kDeleteAt)(7, date));
        }
        CheckShown(5, QStringLiteral("Member ID 7 does not have this %1 any more."));
        QCOMPARE(m_messages.Texts().size(), told);
    }

    /// Of the one that is left.
    void ShowByClass()
    {
        auto const choose = [&](int entry, QList<CDialogUser::Step> const& list) {
            QList<CDialogUser::Step> const steps = {Steps(QStringLiteral("memberIDEdit=7 OK")),
                Steps(QStringLiteral("classList=%1 OK").arg(entry))};
            return Told(steps + list, kShowOfMember);
        };
        QCOMPARE(choose(0, {}),
            QStringLiteral("No %1s are recorded for Member ID 7 under Unknown").arg(m_strOne));
        for (auto const& [entry, name] :
            {std::pair(1, QStringLiteral("All Categories/Courses/Sections")),
                {2, QStringLiteral("Staff Wellness Morning")}}) {
            QString seen;
            QCOMPARE(choose(entry, {SeeList(seen)}), QString());
            QCOMPARE(seen.toLower(),
                QStringLiteral("%1s for Member ID 7, %2|Date|1").arg(m_strOne, name).toLower());
        }
    }

    QString const m_strOne;
    QStringList const m_lstTables;
    QString const m_strDate;
    CTreeNode const m_node;
};
