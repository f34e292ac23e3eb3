#include "tests/workouts/TreeFixture.h"

#include "tests/QtTests.h"

#include <algorithm>
#include <map>
#include <optional>
#include <random>

using namespace Qt::StringLiterals;

namespace
{

constexpr int kMembers = 16;

/// What the tree must show, kept in plain lists.
class CExpectedTree
{
public:
    bool Shows(int id) const
    {
        return std::ranges::find(m_lstShown, id, &CEntry::m_nID) != m_lstShown.end();
    }
    int RowOf(int id) const
    {
        return static_cast<int>(
            std::ranges::find(m_lstShown, id, &CEntry::m_nID) - m_lstShown.begin());
    }
    void Add(int id, QString const& name)
    {
        if (!Shows(id)) {
            auto const place = std::ranges::upper_bound(m_lstShown, name.toLower(), {},
                [](auto const& entry) { return entry.m_strPlace.toLower(); });
            m_lstShown.insert(place, {id, name, name, {}});
        }
    }
    void Remove(int id)
    {
        std::erase_if(m_lstShown, [id](auto const& e) { return e.m_nID == id; });
    }
    void Change(int id, int newID, QString const& name)
    {
        if (Shows(id)) {
            auto& entry = At(id);
            entry.m_nID = newID;
            entry.m_strName = name;
            entry.m_workouts.reset();
        }
    }
    void Unload(int id) { At(id).m_workouts.reset(); }
    void Load(int id, QStringList workouts)
    {
        if (!At(id).m_workouts) {
            workouts.sort();
            At(id).m_workouts = workouts.isEmpty() ? QStringList{u"None Found"_s} : workouts;
        }
    }
    void Clear() { m_lstShown.clear(); }
    QStringList Lines() const
    {
        QStringList lines;
        for (auto const& entry : m_lstShown) {
            lines += u"%1 %2"_s.arg(entry.m_nID).arg(entry.m_strName);
            lines += entry.m_workouts.value_or(QStringList());
        }
        return lines;
    }

private:
    struct CEntry
    {
        int m_nID = 0;
        QString m_strPlace;
        QString m_strName;
        std::optional<QStringList> m_workouts; // as they were loaded
    };

    CEntry& At(int id) { return m_lstShown[static_cast<std::size_t>(RowOf(id))]; }

    std::vector<CEntry> m_lstShown;
};

struct CStored
{
    QString m_strName;
    QStringList m_lstWorkouts;
    int m_nRow = 0; ///< members of one name are loaded as they were stored
};

} // namespace

class MemberTreeWalkTest : public CTreeTest
{
    Q_OBJECT
private Q_SLOTS:
    void init() { MakeWindow(); }
    void cleanup() { CloseWindow(); }
    void survivesAnyOrderOfChanges();

private:
    int Pick(int count) { return static_cast<int>(m_random() % static_cast<unsigned>(count)); }
    QString AnyName() { return u"%1%2, X "_s.arg(QChar(u"aBbA"[Pick(4)])).arg(Pick(3)); }
    static std::string LastOf(QString const& name) { return FromQt(name.section(u',', 0, 0)); }
    void AddMember(int id, int step);
    void RemoveMember(int id);
    void RenameMember(int id);
    void RenumberMember(int id, int to);
    void AddWorkout(int id);
    void OpenWorkouts(int id);
    void ReopenRoot();
    void Reset();
    QStringList Shown() const;

    std::mt19937 m_random{20261124};
    CExpectedTree m_expected;
    std::map<int, CStored> m_stored;
    bool m_bLoaded = false;
};

void MemberTreeWalkTest::AddMember(int id, int step)
{
    if (!m_stored.contains(id)) {
        m_stored[id] = {AnyName(), {}, step};
        StoreMember(id, LastOf(m_stored[id].m_strName), "X");
        if (Pick(4) > 0 && m_tree->AddMemberNode(id)) { // now and then nobody tells the tree
            m_expected.Add(id, m_stored[id].m_strName);
        }
    }
}

void MemberTreeWalkTest::RemoveMember(int id)
{
    m_stored.erase(id);
    RunOnMembers("DELETE FROM members WHERE member_id = " + std::to_string(id));
    QCOMPARE(m_tree->RemoveMemberNode(id), m_expected.Shows(id));
    m_expected.Remove(id);
}

void MemberTreeWalkTest::RenameMember(int id)
{
    if (m_stored.contains(id)) {
        auto const name = m_stored[id].m_strName = AnyName();
        RunOnMembers("UPDATE members SET last_name = '" + LastOf(name)
            + "' WHERE member_id = " + std::to_string(id));
        QCOMPARE(m_tree->RefreshMemberNode(id, kMembersNode, 0), m_expected.Shows(id));
        m_expected.Change(id, id, name);
    }
}

void MemberTreeWalkTest::RenumberMember(int id, int to)
{
    if (m_stored.contains(id) && !m_stored.contains(to) && !m_expected.Shows(to)) {
        auto const number = std::to_string(to);
        RunOnMembers("UPDATE members SET member_id = " + number + ", workout_number = " + number
            + " WHERE member_id = " + std::to_string(id));
        m_stored[to] = m_stored[id];
        m_stored.erase(id);
        QCOMPARE(m_tree->RefreshMemberNode(to, kMembersNode, id), m_expected.Shows(id));
        m_expected.Change(id, to, m_stored[to].m_strName);
    }
}

void MemberTreeWalkTest::AddWorkout(int id)
{
    if (m_stored.contains(id)) {
        CEFOleDateTime const when(2020 + Pick(5), 1 + Pick(12), 1 + Pick(28));
        StoreWorkout(id, when);
        m_stored[id].m_lstWorkouts += ToQt(when.DateTimeStrLongYear());
        if (Pick(2) == 0 && m_expected.Shows(id)) {
            QVERIFY(m_tree->RefreshMemberNode(id, kWorkoutsNode, 0));
            m_expected.Unload(id);
        }
    }
}

void MemberTreeWalkTest::OpenWorkouts(int id)
{
    if (m_expected.Shows(id)) {
        auto const member = Model().index(m_expected.RowOf(id), 0, Node({u"Members"_s}));
        auto const workouts = Model().index(3, 0, member);
        m_tree->expand(member);
        m_tree->collapse(workouts);
        m_tree->expand(workouts);
        m_expected.Load(id, m_stored[id].m_lstWorkouts);
    }
}

void MemberTreeWalkTest::ReopenRoot()
{
    m_tree->collapse(Node({u"Members"_s}));
    m_tree->expand(Node({u"Members"_s}));
    if (!m_bLoaded) {
        std::map<int, int> rows;
        for (auto const& [id, stored] : m_stored) {
            rows[stored.m_nRow] = id;
        }
        for (auto const& [row, id] : rows) {
            m_expected.Add(id, m_stored[id].m_strName);
        }
        m_bLoaded = !rows.empty();
    }
}

void MemberTreeWalkTest::Reset()
{
    m_tree->ResetTree();
    m_expected.Clear();
    m_bLoaded = false;
}

QStringList MemberTreeWalkTest::Shown() const
{
    QStringList lines;
    auto const root = Node({u"Members"_s});
    for (int row = 0; row < Model().rowCount(root); ++row) {
        auto const member = Model().index(row, 0, root);
        auto const code = member.data(CMemberTreeModel::kCodeRole).toInt();
        if (code != kNoneFoundNode) {
            lines += u"%1 %2"_s.arg(code).arg(member.data().toString());
        }
        auto const workouts = Model().index(3, 0, member);
        for (int record = 0; record < Model().rowCount(workouts); ++record) {
            lines += Model().index(record, 0, workouts).data().toString();
        }
    }
    return lines;
}

void MemberTreeWalkTest::survivesAnyOrderOfChanges()
{
    for (int step = 0; step < 1500; ++step) {
        int const id = 1 + Pick(kMembers);
        int const what = Pick(36);
        if (what < 8) {
            AddMember(id, step);
        } else if (what < 11) {
            RemoveMember(id);
        } else if (what < 15) {
            RenameMember(id);
        } else if (what < 19) {
            RenumberMember(id, 1 + Pick(kMembers));
        } else if (what < 25) {
            AddWorkout(id);
        } else if (what < 31) {
            OpenWorkouts(id);
        } else if (what < 35) {
            ReopenRoot();
        } else if (Pick(4) == 0) {
            Reset();
        }
        QCOMPARE(Shown(), m_expected.Lines());
    }
    QVERIFY(m_messages->Texts().isEmpty());
}

CORVANA_TEST(MemberTreeWalkTest);
#include "MemberTreeWalkTest.moc"
