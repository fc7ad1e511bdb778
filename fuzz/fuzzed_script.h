// A script for the scripted provider, made of a fuzzer's bytes: any hierarchy, any rows with any values, and the calls
// that are answered otherwise.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "script.h"

// Bytes that are taken one by one; behind their end there are zeros.
class FuzzedInput {
  public:
    explicit FuzzedInput(std::string_view theBytes) : bytes_(theBytes) {}

    bool IsEmpty() const { return bytes_.empty(); }
    std::uint8_t TakeByte() {
        if (bytes_.empty()) return 0;
        const auto byte = static_cast<std::uint8_t>(bytes_.front());
        bytes_.remove_prefix(1);
        return byte;
    }
    std::uint32_t TakeBelow(std::uint32_t bound) { return TakeByte() % bound; }
    bool TakeBool() { return TakeBelow(2) != 0; }
    std::string_view TakeBytes(size_t count) {
        const std::string_view taken = bytes_.substr(0, count);
        bytes_.remove_prefix(taken.size());
        return taken;
    }

  private:
    std::string_view bytes_;
};

// Fills the script's entries, results and faults.
void MakeFuzzedScript(FuzzedInput& input, Script& script);
