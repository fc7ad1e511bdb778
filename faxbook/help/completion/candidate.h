// What a word can be.
#pragma once

#include <string>

struct Candidate {
    std::string word;  // as the program is to get it
    // It would be taken for an option: the argument "--" has to stand before it.
    bool looksLikeOption = false;
};
