#pragma once

#include <string>
#include <vector>

#include "tools/tessaport/output/Output.h"

namespace Quorvex::Velmora::Tool
{

using Cell = Span;

/// Collects rows and prints them in columns as wide as their longest cell.
class Table
{
public:
    explicit Table(std::vector<std::string> headings = {});

    void row(std::vector<Cell> cells);
    void print(Output& output) const;

private:
    std::vector<std::vector<Cell>> rows;
};

} // namespace Quorvex::Velmora::Tool
