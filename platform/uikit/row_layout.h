#pragma once

#include "platform/graphics/geometry.h"

#include <compare>
#include <cstddef>
#include <optional>
#include <vector>

/// Where the rows of a list stand. Values alone: no view, and nobody who is asked for heights.

namespace platform {

struct RowPath {
    std::size_t section = 0;
    std::size_t row = 0;
    friend auto operator<=>(const RowPath&, const RowPath&) = default;
};

/// Heights in points, none below 0.
struct SectionHeights {
    double header = 0;
    std::vector<double> rows {};
    double footer = 0;
};

/// Sections one under the other, each a header, its rows and a footer, all as wide as the list.
class RowLayout {
public:
    RowLayout() = default;
    RowLayout(const std::vector<SectionHeights>& sections, double width);

    double height() const noexcept { return sections_.empty() ? 0 : sections_.back().back(); }
    std::size_t sections() const noexcept { return sections_.size(); }
    std::size_t rowsOf(std::size_t section) const { return sections_[section].size() - partsBesideRows; }

    /// The row that covers the height; none in headers and footers and outside. A row of no height covers nothing.
    std::optional<RowPath> rowAt(double y) const;
    /// Of parts that there are.
    CGRect rectOf(const RowPath& path) const { return part(path.section, path.row + 1); }
    CGRect rectOfHeader(std::size_t section) const { return part(section, 0); }
    CGRect rectOfFooter(std::size_t section) const { return part(section, sections_[section].size() - 2); }

    /// The rows that the rectangle touches, in their order. One of no height is none.
    std::vector<RowPath> rowsIn(const CGRect& rect) const;

private:
    /// The edges of a section: its top, the header's bottom, each row's, and the footer's.
    using Edges = std::vector<double>;
    static constexpr std::size_t partsBesideRows = 3;

    CGRect part(std::size_t section, std::size_t index) const;
    /// The first section that ends below the height.
    std::size_t firstSectionBelow(double y) const;

    std::vector<Edges> sections_;
    double width_ = 0;
};

} // namespace platform
