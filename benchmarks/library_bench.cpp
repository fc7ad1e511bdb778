// library_bench [ROWS] [ROUNDS]: counting, filling and closing one large address book through QDXL7RC.DLL, beside the
// floor. Rounds of both are interleaved; printed are medians, their spread and their ratio.
#include <windows.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "bench_provider.h"
#include "floor.h"
#include "heap_bytes.h"
#include "qdxl7rc.h"

namespace {

using Clock = std::chrono::steady_clock;

[[noreturn]] void Fail(const char* what) {
    std::fprintf(stderr, "library_bench: %s failed\n", what);
    std::exit(1);
}

template <class Function>
Function* Resolve(HMODULE module, const char* name) {
    auto* function = reinterpret_cast<Function*>(reinterpret_cast<void*>(GetProcAddress(module, name)));
    if (function == nullptr) Fail(name);
    return function;
}

class Series {
  public:
    void Add(double value) { values.push_back(value); }
    double Median() const {
        std::vector<double> sorted = values;
        std::sort(sorted.begin(), sorted.end());
        return sorted[sorted.size() / 2];
    }
    // The distance of the extremes, in percent of the median.
    double Spread() const {
        const auto [low, high] = std::minmax_element(values.begin(), values.end());
        return Median() != 0 ? (*high - *low) / Median() * 100 : 0;
    }

  private:
    std::vector<double> values;
};

struct Measured {
    Series counting, filling, closing, recounting, bytes;
};

template <class Work>
double TimePerRow(ULONG rows, Work work) {
    const Clock::time_point start = Clock::now();
    work();
    return std::chrono::duration<double, std::nano>(Clock::now() - start).count() / rows;
}

void Print(const char* what, const Series& library, const Series& floor) {
    std::printf("%-34s %9.2f (%3.0f %%) %9.2f (%3.0f %%) %7.2f\n", what, library.Median(), library.Spread(),
                floor.Median(), floor.Spread(), library.Median() / floor.Median());
}

}  // namespace

int main(int argc, char** argv) {
    const auto rows = static_cast<ULONG>(argc > 1 ? std::strtoul(argv[1], nullptr, 10) : 200000);
    const int rounds = argc > 2 ? std::atoi(argv[2]) : 7;
    if (rows == 0 || rounds < 1) Fail("reading the arguments: library_bench [ROWS] [ROUNDS]");

    const std::string folder = std::filesystem::absolute(argv[0]).parent_path().string();
    HMODULE provider = LoadLibraryA((folder + "/QDXL7RA.DLL").c_str());
    HMODULE library = LoadLibraryA((folder + "/QDXL7RC.DLL").c_str());
    if (provider == nullptr || library == nullptr) Fail("loading QDXL7RC.DLL and QDXL7RA.DLL beside this program");
    Resolve<SetBenchRowsFunction>(provider, "SetBenchRows")(rows);
    const SRowSet& batch = *Resolve<GetBenchBatchFunction>(provider, "GetBenchBatch")();
    const auto open = Resolve<decltype(OpenAddressBook)>(library, "OpenAddressBook");
    const auto close = Resolve<decltype(CloseAddressBook)>(library, "CloseAddressBook");
    const auto listBooks = Resolve<decltype(GetAddressBookList)>(library, "GetAddressBookList");
    const auto listDestinations = Resolve<decltype(GetDestinationList)>(library, "GetDestinationList");

    std::vector<DestinationRecord> storage;
    std::vector<DestinationRecord*> addresses;
    Measured ours, floors;
    for (int round = 0; round < rounds; ++round) {
        SessionHandle* session = open(nullptr, nullptr, 0, nullptr, 0, nullptr);
        uint32_t bookCount = 0;
        if (session == nullptr || listBooks(session, 0, nullptr, &bookCount, nullptr) != 1) Fail("opening a session");
        AddressBookRecord book{};
        const RecordListDescriptor bookRecords{sizeof book, {}, &book};
        if (listBooks(session, 0, nullptr, &bookCount, &bookRecords) != 1) Fail("listing the address book");

        uint32_t count = 0;
        const size_t before = GetHeapBytes();
        ours.counting.Add(TimePerRow(rows, [&] { listDestinations(session, 0, book.entry, &count, nullptr); }));
        ours.bytes.Add(static_cast<double>(GetHeapBytes() - before) / rows);
        Floor floor;
        uint32_t floorCount = 0;
        floors.counting.Add(TimePerRow(rows, [&] { floorCount = floor.Count(batch, rows); }));
        floors.bytes.Add(static_cast<double>(floor.GetBytes()) / rows);
        if (count != floorCount) Fail("counting the same records twice");

        if (storage.empty()) {
            storage.resize(count);
            for (DestinationRecord& record : storage) addresses.push_back(&record);
        }
        const RecordListDescriptor records{0, {}, addresses.data()};
        int32_t filled = 0;
        const auto fill = [&] {
            ours.filling.Add(
                TimePerRow(rows, [&] { filled = listDestinations(session, 0, book.entry, &count, &records); }));
        };
        const auto fillFloor = [&] { floors.filling.Add(TimePerRow(rows, [&] { floor.Fill(addresses.data()); })); };
        // Whoever comes second finds the records in the cache.
        if (round % 2 == 0) fillFloor();
        fill();
        if (round % 2 != 0) fillFloor();
        if (filled != 1) Fail("filling");

        uint32_t again = 0;
        ours.recounting.Add(TimePerRow(rows, [&] { listDestinations(session, 0, book.entry, &again, nullptr); }));
        ours.closing.Add(TimePerRow(rows, [&] { close(session); }));
        floors.closing.Add(TimePerRow(rows, [&] { floor.Close(); }));
        floors.recounting.Add(TimePerRow(rows, [&] { floor.Count(batch, rows); }));
        floor.Close();
    }
    std::printf("%lu rows, %zu records, medians of %d interleaved rounds (spread)\n", static_cast<unsigned long>(rows),
                storage.size(), rounds);
    std::printf("%-34s %17s %17s %7s\n", "", "library", "floor", "ratio");
    Print("counting, ns per row", ours.counting, floors.counting);
    Print("counting again, ns per row", ours.recounting, floors.recounting);
    Print("filling, ns per row", ours.filling, floors.filling);
    Print("closing, ns per row", ours.closing, floors.closing);
    Print("heap, bytes per row", ours.bytes, floors.bytes);
    return 0;
}
