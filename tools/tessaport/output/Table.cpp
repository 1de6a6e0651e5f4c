#include "tools/tessaport/output/Table.h"

#include <algorithm>
#include <utility>

#include "tools/tessaport/text/Text.h"

namespace Quorvex::Velmora::Tool
{
namespace
{

std::vector<std::size_t> columnWidths(const std::vector<std::vector<Cell>>& rows)
{
    std::vector<std::size_t> widths;
    for (const auto& row : rows) {
        widths.resize(std::max(widths.size(), row.size()));
        for (std::size_t column = 0; column < row.size(); ++column)
            widths[column] = std::max(widths[column], characterCount(row[column].text));
    }
    return widths;
}

} // namespace

Table::Table(std::vector<std::string> headings)
{
    if (headings.empty())
        return;
    std::vector<Cell> cells;
    for (std::string& heading : headings)
        cells.emplace_back(std::move(heading), Colour::Heading);
    rows.push_back(std::move(cells));
}

void Table::row(std::vector<Cell> cells) { rows.push_back(std::move(cells)); }

void Table::print(Output& output) const
{
    const std::vector<std::size_t> widths = columnWidths(rows);
    for (const auto& row : rows) {
        std::vector<Span> line;
        for (std::size_t column = 0; column < row.size(); ++column) {
            line.push_back(row[column]);
            if (column + 1 < row.size())
                line.emplace_back(std::string(widths[column] - characterCount(row[column].text) + 2, ' '));
        }
        output.line(line);
    }
}

} // namespace Quorvex::Velmora::Tool
