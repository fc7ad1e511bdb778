// A line of blanks ends a record as an empty one does, unless it continues a line.
#include "formats/ldif/ldif_lines.h"

#include "text/ascii.h"

bool LdifLines::Next(ContentLine& line) {
    while (!lines_.AtEnd()) {
        const size_t start = lines_.Position();
        line.number = lines_.Number();
        line.folded = false;
        size_t end = lines_.Take();
        const bool isEmpty = Trimmed(lines_.Text().substr(start, end - start)).empty();
        while (!isEmpty && !lines_.AtEnd() && lines_.Rest().front() == ' ') {
            line.folded = true;
            end = lines_.Take();
        }
        line.raw = isEmpty ? std::string_view() : lines_.Text().substr(start, end - start);
        if (!line.raw.starts_with('#')) return true;
    }
    return false;
}
