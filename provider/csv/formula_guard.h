// Formulas in CSV files: spreadsheets run a cell that begins with = + - or @, the full-width and small forms of these
// included, whatever blanks and quotes stand before it. Such a cell is written with an apostrophe before it, which
// makes it text, and read without. Where a spreadsheet takes semicolons for the ends of cells and not commas, a cell
// also begins behind each semicolon and line break. Telephone numbers stay what they are: a + or - with nothing behind
// it but digits and what is dialled or written between them.
#pragma once

#include <string>
#include <string_view>

// The cell with an apostrophe wherever a formula would begin. Text is UTF-8.
std::string WithFormulaGuards(std::string_view cell);

// What WithFormulaGuards was given.
bool HasFormulaGuards(std::string_view cell);
std::string WithoutFormulaGuards(std::string_view cell);
