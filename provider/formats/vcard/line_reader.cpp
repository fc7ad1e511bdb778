// Folds, empty lines and joined lines.
#include "formats/vcard/line_reader.h"

#include "text/ascii.h"

size_t LineReader::TakeFolded(bool& folded) {
    size_t end = lines_.Take();
    while (!lines_.AtEnd() && IsBlank(lines_.Rest().front())) {
        folded = true;
        end = lines_.Take();
    }
    return end;
}

bool LineReader::Next(ContentLine& line) {
    while (!lines_.AtEnd()) {
        const size_t start = lines_.Position();
        line.number = lines_.Number();
        line.folded = false;
        const size_t end = TakeFolded(line.folded);
        line.raw = lines_.Text().substr(start, end - start);
        if (!Trimmed(line.raw).empty()) return true;
    }
    return false;
}

bool LineReader::JoinNext(ContentLine& line) {
    if (lines_.AtEnd()) return false;
    const std::string_view next = lines_.Rest();
    if (next.front() == '\r' || next.front() == '\n' || StartsWithIgnoringCase(next, "END:") ||
        StartsWithIgnoringCase(next, "BEGIN:"))
        return false;
    const auto start = static_cast<size_t>(line.raw.data() - lines_.Text().data());
    bool folded = false;
    line.raw = lines_.Text().substr(start, TakeFolded(folded) - start);
    return true;
}
