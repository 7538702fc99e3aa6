#include "platform/uikit/row_layout.h"

#include <algorithm>

namespace platform {

RowLayout::RowLayout(const std::vector<SectionHeights>& sections, double width)
    : width_(width)
{
    double y = 0;
    for (const SectionHeights& section : sections) {
        Edges& edges = sections_.emplace_back();
        edges.reserve(section.rows.size() + partsBesideRows);
        edges.push_back(y);
        edges.push_back(y += section.header);
        for (const double row : section.rows)
            edges.push_back(y += row);
        edges.push_back(y += section.footer);
    }
}

CGRect RowLayout::part(std::size_t section, std::size_t index) const
{
    const Edges& edges = sections_[section];
    return CGRectMake(0, edges[index], width_, edges[index + 1] - edges[index]);
}

std::size_t RowLayout::firstSectionBelow(double y) const
{
    const auto found
        = std::ranges::upper_bound(sections_, y, std::less {}, [](const Edges& edges) { return edges.back(); });
    return static_cast<std::size_t>(found - sections_.begin());
}

std::optional<RowPath> RowLayout::rowAt(double y) const
{
    const std::size_t section = y >= 0 ? firstSectionBelow(y) : sections_.size();
    if (section == sections_.size())
        return std::nullopt;
    const Edges& edges = sections_[section];
    // The last part that begins at the height or above it covers it.
    const auto part = static_cast<std::size_t>(std::ranges::upper_bound(edges, y) - edges.begin()) - 1;
    if (part == 0 || part > rowsOf(section))
        return std::nullopt;
    return RowPath { section, part - 1 };
}

std::vector<RowPath> RowLayout::rowsIn(const CGRect& rect) const
{
    std::vector<RowPath> rows;
    if (rect.size.width <= 0 || rect.size.height <= 0 || CGRectGetMaxX(rect) <= 0 || rect.origin.x >= width_)
        return rows;
    const double bottom = CGRectGetMaxY(rect);
    for (std::size_t section = firstSectionBelow(rect.origin.y); section < sections_.size(); ++section) {
        const Edges& edges = sections_[section];
        if (edges.front() >= bottom)
            break;
        // Rows begin behind the header's bottom, the second edge.
        const auto first = std::max(std::ranges::upper_bound(edges, rect.origin.y), edges.begin() + 2);
        for (auto edge = first; edge < edges.end() - 1 && *(edge - 1) < bottom; ++edge)
            if (*edge > *(edge - 1))
                rows.push_back({ section, static_cast<std::size_t>(edge - edges.begin()) - 2 });
    }
    return rows;
}

} // namespace platform
