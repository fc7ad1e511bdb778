// Lists of names inside messages: the names that are near to one that was not found, and a list cut to a line's length.
#pragma once

#include <string>
#include <string_view>
#include <vector>

// The names that contain the wanted one or differ from it by a few letters, without regard to case; the nearest first,
// each once.
std::vector<std::string> NearNames(std::string_view wanted, const std::vector<std::string>& names);

// "A, B, C", and after a dozen names how many more there are.
std::string JoinNames(const std::vector<std::string>& names);
