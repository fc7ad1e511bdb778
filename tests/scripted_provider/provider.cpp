// The scripted provider's entry points, and the making of values and readable arguments behind its objects.
#include <algorithm>
#include <cstdio>

#include "object.h"

namespace {

constexpr int unsetByte = 0xCD;
Script* script = nullptr;

}  // namespace

Script& CurrentScript() {
    return *script;
}

Call::Call(const std::string& object, const char* function, const std::string& arguments) {
    ++script->totals.calls;
    ++script->callCount;
    const unsigned ofFunction = ++script->callCounts[function];
    if (script->keepsCalls)
        script->calls.push_back((object.empty() ? "" : object + '.') + function + '(' + arguments + ')');
    for (const Fault& candidate : script->faults)
        if (candidate.function.empty() ? candidate.call == script->callCount
                                       : candidate.function == function && candidate.call == ofFunction)
            fault_ = candidate;
    if (fault_) ++script->totals.hostileAnswers;
    if (script->during) script->during(function);
}

std::string Show(ULONG number) {
    char text[11];
    std::snprintf(text, sizeof text, number < 10 ? "%u" : "0x%X", static_cast<unsigned>(number));
    return text;
}

std::string Show(const void* pointer) {
    if (pointer == nullptr) return "null";
    char text[32];
    std::snprintf(text, sizeof text, "%p", pointer);
    return text;
}

std::string Show(const SPropTagArray* tags) {
    std::string all = "[";
    for (ULONG i = 0; i < tags->cValues; ++i) {
        char tag[10];
        std::snprintf(tag, sizeof tag, "%08X", static_cast<unsigned>(tags->aulPropTag[i]));
        if (i > 0) all += ' ';
        all += tag;
    }
    return all + ']';
}

std::string ShowIdentifier(ULONG size, const BYTE* bytes) {
    if (bytes == nullptr) return size == 0 ? "null" : "null of " + std::to_string(size) + " bytes";
    if (size > 16) return std::to_string(size) + " bytes";
    return {reinterpret_cast<const char*>(bytes), size};
}

void* Allocate(size_t size, Loan& loan) {
    void* block = std::malloc(size == 0 ? 1 : size);
    if (block == nullptr) throw std::bad_alloc();
    std::memset(block, unsetByte, size);
    loan.blocks.emplace_back(block, size);
    return block;
}

SPropValue* MakeValues(const Row& row, const SPropTagArray* columns, Loan& loan, ULONG& count) {
    const ULONG all = row.asGiven ? static_cast<ULONG>(row.values.size()) : columns->cValues;
    count = std::min(row.length.value_or(all), all);
    if (row.asGiven || row.length || row.withoutValues) ++script->totals.hostileAnswers;
    if (row.withoutValues) return nullptr;
    auto* const values = static_cast<SPropValue*>(Allocate(count * sizeof(SPropValue), loan));
    for (ULONG i = 0; i < count; ++i) {
        Value given = row.asGiven ? row.values[i] : Missing(columns->aulPropTag[i]);
        for (const Value& candidate : row.values)
            if (!row.asGiven && PROP_ID(candidate.tag) == PROP_ID(columns->aulPropTag[i])) given = candidate;
        SPropValue& value = values[i];
        value.ulPropTag = given.tag;
        const std::string& bytes = given.bytes;
        if (given.isNull) ++script->totals.hostileAnswers;
        switch (PROP_TYPE(given.tag)) {
            case PT_STRING8:
                value.Value.lpszA = given.isNull ? nullptr : static_cast<char*>(Allocate(bytes.size() + 1, loan));
                if (!given.isNull) std::memcpy(value.Value.lpszA, bytes.c_str(), bytes.size() + 1);
                break;
            case PT_BINARY:
                value.Value.bin.cb = static_cast<ULONG>(given.isNull ? given.number : static_cast<LONG>(bytes.size()));
                value.Value.bin.lpb = given.isNull ? nullptr : static_cast<BYTE*>(Allocate(bytes.size(), loan));
                if (!given.isNull) std::memcpy(value.Value.bin.lpb, bytes.data(), bytes.size());
                break;
            case PT_I2:
                value.Value.i = static_cast<short>(given.number);
                break;
            default:
                value.Value.l = given.number;
                break;
        }
    }
    return values;
}

void FreeAddressListAndValues(ADRLIST* list, const std::string& function) {
    const auto found = script->loans.find(list);
    if (found != script->loans.end() && found->second.kind == Kind::AddressList) {
        const size_t room = (found->second.blocks[0].second - offsetof(ADRLIST, aEntries)) / sizeof(ADRENTRY);
        if (list->cEntries > room) script->Misused(function + ": a list with more entries than it has room for");
        for (size_t i = 0; i < std::min<size_t>(list->cEntries, room); ++i)
            if (list->aEntries[i].rgPropVals != nullptr)
                script->TakeBack(list->aEntries[i].rgPropVals, Kind::PropertyArray, function);
    }
    script->TakeBack(list, Kind::AddressList, function);
}

STDAPI VOKOpen(HWND window, const char* profileName, ULONG openValue, void* openData, ULONG flags, void* reserved1,
               void* reserved2, void* reserved3, IAddrBook** addressBook, SessionSupport** support) {
    const Call call("", "VOKOpen",
                    ShowAll(Show(static_cast<const void*>(window)), Show(profileName), Show(openValue), Show(openData),
                            Show(flags), Show(reserved1), Show(reserved2), Show(reserved3)));
    return call.Answer(script->openResult, [&] {
        if (script->opensAddressBook) *addressBook = MakeAddressBook();
        if (script->opensSupport) *support = MakeSupport();
    });
}

STDAPI VOKAdminProfiles(ULONG mode, ULONG_PTR uiParam, const char* profileName, ULONG flags,
                        ProfileAdministration** administration) {
    const Call call("", "VOKAdminProfiles",
                    ShowAll(Show(mode), std::to_string(uiParam), Show(profileName), Show(flags)));
    return call.Answer(S_OK, [&] { *administration = MakeAdministration(); });
}

STDAPI_(void) VOKFreeProws(SRowSet* rows) {
    const Call call("", "VOKFreeProws", "");
    script->TakeBack(rows, Kind::RowSet, "VOKFreeProws");
}

STDAPI SetResourceDllHandle(HMODULE resourceModule) {
    const Call call("", "SetResourceDllHandle", "");
    script->resourceModule = resourceModule;
    return call.Answer(script->resourceResult);
}

// The library looks these up and never calls them.
STDAPI VOKAllocateBuffer(ULONG, void**) {
    script->Misused("VOKAllocateBuffer was called");
    return MAPI_E_NO_SUPPORT;
}
STDAPI VOKAllocateMore(ULONG, void*, void**) {
    script->Misused("VOKAllocateMore was called");
    return MAPI_E_NO_SUPPORT;
}
STDAPI_(ULONG) VOKFreeBuffer(void*) {
    script->Misused("VOKFreeBuffer was called");
    return 0;
}

extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID) {
    if (reason == DLL_PROCESS_ATTACH) {
        const auto find = reinterpret_cast<FindScriptFunction*>(
            reinterpret_cast<void*>(GetProcAddress(GetModuleHandleA(nullptr), "FindScript")));
        if (find == nullptr) return FALSE;
        script = find();
        const Inside inside;
        char path[1024];
        script->loaded.emplace_back(path, GetModuleFileNameA(instance, path, sizeof path));
    } else if (reason == DLL_PROCESS_DETACH) {
        ++script->unloadCount;
    }
    return TRUE;
}
