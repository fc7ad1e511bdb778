// One to four damages; half of the time libFuzzer's own, which knows what the code compares with. Whatever is done
// follows from the input and the seed, so that a run can be repeated.
#include "grammar_mutator.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <random>
#include <string>

#include "text/ascii.h"

extern "C" size_t LLVMFuzzerMutate(std::uint8_t* data, size_t size, size_t maxSize);

namespace {

constexpr std::string_view lineEnds[] = {"\r\n", "\n", "\r", "\n\r", "\r\r\n", "\r\n\r\n"};
// What no text holds, or what other letters are made of: NULs, halves of surrogates, overlong and cut characters, ends
// of lines and blanks beyond ASCII, byte-order marks in the middle.
constexpr std::string_view strangeBytes[] = {{"\0", 1},
                                             {"\0\0\0", 3},
                                             "\xED\xA0\x80",
                                             "\xED\xB0\x80",
                                             {"\xD8\x3D\xDE\x00", 4},
                                             "\xC0\xAF",
                                             "\xF4\x90\x80\x80",
                                             "\xE3\x83",
                                             "\xEF\xBB\xBF",
                                             "\xFF\xFE",
                                             "\xFE\xFF",
                                             "\xE2\x80\xA8",
                                             "\xC2\x85",
                                             "\xC2\xA0",
                                             "\x1B$B!!\x1B(B",
                                             "\x83\x5C\x83\x3B",
                                             "+AGE-",
                                             "\xF0\x9F\x93\xA0",
                                             "\x81\x30\x81",
                                             "\xE2\x80\xAE"};

class Damage {
  public:
    Damage(std::string text, size_t most, unsigned seed) : text_(std::move(text)), most_(most), random_(seed) {}

    void Do() {
        using Way = void (Damage::*)();
        constexpr Way ways[] = {&Damage::PutPiece, &Damage::PutLine,     &Damage::PutStrangeBytes,
                                &Damage::Cut,      &Damage::Double,      &Damage::Repeat,
                                &Damage::Swap,     &Damage::Splice,      &Damage::Nest,
                                &Damage::Fold,     &Damage::ChangeCase,  &Damage::ChangeLineEnds,
                                &Damage::Encode,   &Damage::ChangeWidth, &Damage::CutEnd,
                                &Damage::PutPiece};
        (this->*ways[Below(std::size(ways))])();
        if (text_.size() > most_) text_.resize(most_);
    }
    const std::string& Text() const { return text_; }

  private:
    struct Range {
        size_t start;
        size_t size;
    };

    size_t Below(size_t bound) { return bound == 0 ? 0 : random_() % bound; }
    bool OneIn(size_t chances) { return Below(chances) == 0; }
    std::string_view OneOf(std::span<const std::string_view> texts) { return texts[Below(texts.size())]; }

    bool IsBoundary(char c) const {
        return c == '\r' || c == '\n' || theGrammar.separators.find(c) != std::string_view::npos;
    }
    // Where a line begins, or a part of one, or anywhere.
    size_t Place() {
        size_t place = Below(text_.size() + 1);
        const size_t kind = Below(4);
        if (kind == 3) return place;
        while (place > 0 && !(kind < 2 ? text_[place - 1] == '\n' : IsBoundary(text_[place - 1]))) --place;
        return place;
    }
    // A part between two separators, a line or some, or any bytes.
    Range Part() {
        const size_t start = Place();
        size_t end = start;
        const size_t kind = Below(4);
        if (kind == 3) return {start, Below(text_.size() - start + 1)};
        for (size_t parts = kind == 2 ? 1 + Below(6) : 1; parts > 0; --parts)
            while (end < text_.size() && !(kind == 0 ? IsBoundary(text_[end++]) : text_[end++] == '\n')) {
            }
        return {start, end - start};
    }
    std::string Taken(const Range& range) const { return text_.substr(range.start, range.size); }
    void Replace(const Range& range, std::string_view by) { text_.replace(range.start, range.size, by); }
    // At a place, instead of what stands there or before it.
    void Put(std::string_view bytes) { OneIn(3) ? Replace(Part(), bytes) : Replace({Place(), 0}, bytes); }

    void PutPiece() { Put(OneOf(theGrammar.pieces)); }
    void PutLine() {
        std::string line(OneOf(theGrammar.lines));
        line += lineEnds[Below(3)];
        size_t place = Below(text_.size() + 1);
        while (place > 0 && text_[place - 1] != '\n') --place;
        Replace({place, 0}, line);
    }
    void PutStrangeBytes() { Put(OneOf(strangeBytes)); }
    void Cut() { Replace(Part(), ""); }
    void CutEnd() {
        if (OneIn(4)) text_.resize(Place());
    }
    void Double() {
        const Range part = Part();
        Replace({part.start, 0}, Taken(part));
    }
    void Repeat() {
        const std::string part = Taken(Part());
        const size_t place = Place();
        std::string repeated;
        for (size_t times = size_t{1} << Below(7); times > 0 && repeated.size() + part.size() < most_; --times)
            repeated += part;
        Replace({place, 0}, repeated);
    }
    void Swap() {
        Range first = Part();
        Range second = Part();
        if (second.start < first.start) std::swap(first, second);
        if (first.start + first.size > second.start) return;
        const std::string moved = Taken(first);
        const std::string other = Taken(second);
        Replace(second, moved);
        Replace(first, other);
    }
    void Splice() { Put(Taken(Part())); }
    void Nest() {
        const Range part = Part();
        std::string nested(theGrammar.opening);
        nested.append(Taken(part)).append(OneIn(4) ? std::string_view() : theGrammar.closing);
        Replace(part, nested);
    }
    void Fold() {
        for (size_t folds = 1 + Below(4); folds > 0; --folds) Replace({Place(), 0}, theGrammar.fold);
    }
    void ChangeCase() {
        const Range part = Part();
        const bool toUpper = OneIn(2);
        for (size_t i = part.start; i < part.start + part.size; ++i)
            text_[i] = toUpper ? ToUpperAscii(text_[i]) : ToLowerAscii(text_[i]);
    }
    // Of all lines or of some.
    void ChangeLineEnds() {
        const std::string_view by = OneOf(lineEnds);
        const size_t some = OneIn(2) ? 1 : 3;
        std::string changed;
        for (const char c : text_) {
            if (c == '\n' && OneIn(some))
                changed += by;
            else if (c != '\r')
                changed += c;
        }
        text_ = std::move(changed);
    }
    // A part in quoted-printable or base64, whether its property says so or not.
    void Encode() {
        const Range part = Part();
        const std::string plain = Taken(part);
        std::string encoded;
        if (OneIn(2)) {
            constexpr char digits[] = "0123456789ABCDEF";
            for (const char c : plain) encoded.append({'=', digits[(c >> 4) & 0xF], digits[c & 0xF]});
            if (OneIn(2)) encoded += "=\r\n";
        } else {
            constexpr char digits[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
            unsigned bits = 0;
            for (size_t i = 0; i < plain.size(); ++i) {
                bits = bits << 8 | static_cast<unsigned char>(plain[i]);
                encoded += digits[bits >> (2 + 2 * (i % 3)) & 0x3F];
                if (i % 3 == 2) encoded += digits[bits & 0x3F];
            }
            if (OneIn(2)) encoded += "==";
        }
        Replace(part, encoded);
    }
    // The whole text in units of two bytes, or in bytes again.
    void ChangeWidth() {
        if (!OneIn(8)) return;
        std::string changed;
        if (text_.find('\0') != std::string::npos) {
            for (const char c : text_)
                if (c != '\0') changed += c;
        } else {
            const bool isLittle = OneIn(2);
            if (!OneIn(4)) changed = isLittle ? "\xFF\xFE" : "\xFE\xFF";
            for (const char c : text_) changed.append({isLittle ? c : '\0', isLittle ? '\0' : c});
        }
        text_ = std::move(changed);
    }

    std::string text_;
    size_t most_;
    std::minstd_rand random_;
};

}  // namespace

// The first byte says how the rest is read (TakeChoice in card_checks.h) and is left to libFuzzer.
extern "C" size_t LLVMFuzzerCustomMutator(std::uint8_t* data, size_t size, size_t maxSize, unsigned seed) {
    std::minstd_rand random(seed);
    if (size < 2 || maxSize < 2 || random() % 2 == 0) return LLVMFuzzerMutate(data, size, maxSize);
    Damage damage({reinterpret_cast<const char*>(data) + 1, size - 1}, maxSize - 1, static_cast<unsigned>(random()));
    for (auto times = 1 + random() % 4; times > 0; --times) damage.Do();
    std::memcpy(data + 1, damage.Text().data(), damage.Text().size());
    return damage.Text().size() + 1;
}

// The beginning of one input and the end of another, each up to or from the beginning of a line.
extern "C" size_t LLVMFuzzerCustomCrossOver(const std::uint8_t* first, size_t firstSize, const std::uint8_t* second,
                                            size_t secondSize, std::uint8_t* out, size_t maxSize, unsigned seed) {
    std::minstd_rand random(seed);
    const auto lineStart = [&](const std::uint8_t* bytes, size_t size) {
        size_t place = size == 0 ? 0 : random() % size;
        while (place > 0 && bytes[place - 1] != '\n') --place;
        return place;
    };
    const size_t head = std::min(std::max<size_t>(lineStart(first, firstSize), firstSize > 0), maxSize);
    const size_t from = lineStart(second, secondSize);
    const size_t tail = std::min(secondSize - from, maxSize - head);
    std::copy_n(first, head, out);
    std::copy_n(second + from, tail, out + head);
    return head + tail;
}
