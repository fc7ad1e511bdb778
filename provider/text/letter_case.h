// Small letters of the scripts that address files are in. Of those only Latin, Greek and Cyrillic have capitals, and
// the small letters stand at one of a few distances.
#pragma once

constexpr char32_t SmallLetter(char32_t c) {
    if (c >= 'A' && c <= 'Z') return c + 32;
    if ((c >= 0xC0 && c <= 0xDE && c != 0xD7) || (c >= 0x391 && c <= 0x3AB) || (c >= 0x410 && c <= 0x42F))
        return c + 32;
    if (c >= 0x400 && c <= 0x40F) return c + 80;
    if (c >= 0x388 && c <= 0x38A) return c + 37;
    if (c == 0x386) return 0x3AC;
    if (c == 0x38C) return 0x3CC;
    if (c == 0x38E || c == 0x38F) return c + 63;
    if (c == 0x178) return 0xFF;
    if (c == 0x130) return 'i';
    const bool pairsEvenFirst = (c >= 0x100 && c <= 0x137) || (c >= 0x14A && c <= 0x177) || (c >= 0x218 && c <= 0x21B);
    const bool pairsOddFirst = (c >= 0x139 && c <= 0x148) || (c >= 0x179 && c <= 0x17E);
    if ((pairsEvenFirst && c % 2 == 0) || (pairsOddFirst && c % 2 == 1)) return c + 1;
    return c;
}
