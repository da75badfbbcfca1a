#pragma once

class QPrinter;

namespace benthor::platform {

class FlexGrid;

/// Prints all of a grid from the upper left corner of the first page on: as wide as the page takes it, with
/// the headings on each page, in black on white but for cells that were told a colour. False when the printer
/// takes nothing.
bool printGrid(QPrinter& printer, const FlexGrid& grid);

} // namespace benthor::platform
