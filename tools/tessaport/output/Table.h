// Columns for people.
#pragma once

#include <string>
#include <vector>

#include "tools/tessaport/output/Output.h"

namespace Quorvex::Velmora::Tool
{

struct Cell {
    std::string text;
    Colour colour = Colour::Plain;

    Cell(std::string cellText, Colour cellColour = Colour::Plain) : text(std::move(cellText)), colour(cellColour) {}
    Cell(const char* cellText) : text(cellText) {}
};

/// Collects rows and prints them with columns as wide as their longest cell.
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
