// The script's own workings: the ledger and the list of calls.
#include "script.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

namespace {

constexpr int freedByte = 0xDD;

const char* NameOf(Kind kind) {
    switch (kind) {
        case Kind::Object:
            return "object";
        case Kind::RowSet:
            return "row set";
        case Kind::PropertyArray:
            return "property array";
        case Kind::AddressList:
            return "address list";
    }
    return "?";
}

std::string FunctionOf(const std::string& call) {
    const size_t end = call.find('(');
    const size_t dot = call.rfind('.', end);
    const size_t begin = dot == std::string::npos ? 0 : dot + 1;
    return call.substr(begin, end - begin);
}

}  // namespace

Value Text(ULONG tag, std::string text) {
    return {.tag = tag, .bytes = std::move(text)};
}
Value Number(ULONG tag, LONG number) {
    return {.tag = tag, .number = number};
}
Value Identifier(std::string id) {
    return {.tag = PR_ENTRYID, .bytes = std::move(id)};
}
Value Missing(ULONG tag, LONG code) {
    return {.tag = CHANGE_PROP_TYPE(tag, PT_ERROR), .number = code};
}

void Script::Reset() {
    const Totals kept = totals;
    for (auto& [key, loan] : loans)
        for (auto& [block, size] : loan.blocks) std::free(block);
    for (void* block : retired) std::free(block);
    *this = Script();
    totals = kept;
}

void Script::Forget() {
    calls.clear();
    callCounts.clear();
    callCount = 0;
}

std::string Script::CallsOf(const std::vector<std::string>& functions) const {
    std::string lines;
    for (const std::string& call : calls)
        if (std::find(functions.begin(), functions.end(), FunctionOf(call)) != functions.end()) lines += call + '\n';
    return lines;
}

unsigned Script::CountOf(const std::string& function) const {
    const auto found = callCounts.find(function);
    return found == callCounts.end() ? 0 : found->second;
}

std::string Script::Imbalance() const {
    std::string text;
    std::map<Kind, unsigned> live;
    for (const auto& [key, loan] : loans) ++live[loan.kind];
    for (const auto& [kind, count] : live) text += std::to_string(count) + " x " + NameOf(kind) + " not given back\n";
    for (const std::string& misuse : misuses) text += misuse + '\n';
    return text;
}

void Script::Lend(void* key, Loan loan) {
    ++totals.lent;
    loans.emplace(key, std::move(loan));
}

void Script::TakeBack(void* key, Kind kind, const std::string& function) {
    const auto found = loans.find(key);
    if (found == loans.end()) return Misused(function + ": freed already, or never handed out");
    if (found->second.kind != kind) return Misused(function + ": given a " + NameOf(found->second.kind));
    for (auto& [block, size] : found->second.blocks) {
        std::memset(block, freedByte, size);
        std::free(block);
    }
    loans.erase(found);
    ++totals.takenBack;
}

void Script::Misused(std::string what) {
    misuses.push_back(std::move(what));
}
