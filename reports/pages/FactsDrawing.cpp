#include "reports/document/Report.h"
#include "reports/pages/Drawings.h"
#include "reports/pages/PageFlow.h"

#include <QPainter>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace
{

constexpr double kGapPoints = 16; ///< between columns
constexpr double kMostLabel = 0.5; ///< of a column

struct CFact
{
    CParagraph label;
    CParagraph value;
};

} // namespace

bool FlowFacts(CPageFlow& flow, CReportFacts const& facts)
{
    auto const& faces = flow.Faces();
    auto const columns = std::clamp(facts.m_nColumns, 1, 3);
    auto const gap = flow.Points(kGapPoints);
    auto const width = (flow.Width() - gap * (columns - 1)) / columns;
    double label = 0;
    for (auto const& fact : facts.m_lstFacts) {
        label = std::max(label, faces.m_note.Width(ShownText(fact.first, 100)));
    }
    label = std::min(label + flow.Points(8), width * kMostLabel);
    flow.Gap(flow.Points(4));
    auto const& all = facts.m_lstFacts;
    for (std::size_t first = 0; first < all.size(); first += std::size_t(columns)) {
        auto const end = std::min(all.size(), first + std::size_t(columns));
        std::vector<CFact> row;
        double height = 0;
        for (auto i = first; i < end; ++i) {
            auto const& value = all[i].second;
            row.push_back(
                {CParagraph(faces.m_note, flow.Device(), ShownText(all[i].first, 200), label, 3),
                    CParagraph(faces.m_body, flow.Device(),
                        value.empty() ? u"\u2013"_s : ShownText(value, 600), width - label, 12)});
            height = std::max({height, row.back().label.Height(), row.back().value.Height()});
        }
        if (!flow.Need(height)) {
            return false;
        }
        auto const y = flow.Take(height + flow.Points(2));
        if (auto* const painter = flow.Painter(); painter != nullptr) {
            auto const lower = faces.m_body.Ascent() - faces.m_note.Ascent(); // on one line
            for (std::size_t i = 0; i < row.size(); ++i) {
                auto const x = double(i) * (width + gap);
                row[i].label.Draw(*painter, x, y + lower);
                row[i].value.Draw(*painter, x + label, y);
            }
        }
    }
    return true;
}
