// library_bench [ROWS [ROUNDS [RESULTS]]]: large address books, hierarchies and groups through QDXL7RC.DLL, beside the
// floor. Rounds of both are interleaved; printed are medians, their spread and their ratio, and written to the file
// RESULTS, too. ROWS, at least 1000, is the size of the largest address book; hierarchies and groups have a tenth of
// it.
#include <algorithm>
#include <cstdlib>
#include <string>
#include <vector>

#include "bench_session.h"
#include "floor.h"
#include "platform/system/heap_bytes.h"
#include "series.h"

namespace {

struct Measured {
    Series counting, recounting, filling, closing, bytes;
};

// One address book of that many rows. The caller's records are made once for all rounds.
void MeasureBook(const Modules& modules, ULONG rows, int rounds, Measured& ours, Measured& floors) {
    modules.book.rows = rows;
    const bool areFaxEntries = modules.book.contentsStyle != S_OK;
    const SRowSet& batch = *modules.getBatch();
    Held<IAddrBook> addressBook;
    Held<SessionSupport> support;
    modules.openProvider(nullptr, nullptr, 0, nullptr, 0, nullptr, nullptr, nullptr, addressBook.Receive(),
                         support.Receive());
    const auto countFloor = [&](Floor& floor) {
        return areFaxEntries ? floor.CountFaxEntries(batch, rows, *addressBook.Get(), *support.Get())
                             : floor.Count(batch, rows);
    };
    std::vector<DestinationRecord> storage;
    std::vector<DestinationRecord*> addresses;
    for (int round = 0; round < rounds; ++round) {
        Session session(modules);
        uint32_t count = 0;
        const size_t before = GetHeapBytes();
        ours.counting.Add(TimePer(rows, [&] { count = session.Count(); }));
        ours.bytes.Add(static_cast<double>(GetHeapBytes() - before) / rows);
        Floor floor;
        uint32_t floorCount = 0;
        floors.counting.Add(TimePer(rows, [&] { floorCount = countFloor(floor); }));
        floors.bytes.Add(static_cast<double>(floor.GetBytes()) / rows);
        Require(count == floorCount, "counting the same records twice");

        if (storage.empty()) {
            storage.resize(count);
            for (DestinationRecord& record : storage) addresses.push_back(&record);
        }
        const auto fill = [&] { ours.filling.Add(TimePer(rows, [&] { session.Fill(addresses); })); };
        const auto fillFloor = [&] { floors.filling.Add(TimePer(rows, [&] { floor.Fill(addresses.data()); })); };
        // Whoever comes second finds the records in the cache.
        if (round % 2 == 0) fillFloor();
        fill();
        if (round % 2 != 0) fillFloor();

        const size_t beforeAgain = GetHeapBytes();
        ours.recounting.Add(TimePer(rows, [&] { session.Count(); }));
        Require(GetHeapBytes() <= beforeAgain + 64 * 1024, "counting again without fresh memory");
        ours.closing.Add(TimePer(rows, [&] { session.Close(); }));
        floors.closing.Add(TimePer(rows, [&] { floor.Close(); }));
        floors.recounting.Add(TimePer(rows, [&] { countFloor(floor); }));
    }
}

// Small books are read more often, so that all sizes take their time.
int RoundsFor(ULONG rows, ULONG largest, int rounds) {
    return static_cast<int>(std::clamp<double>(rounds * (static_cast<double>(largest) / rows), rounds, 400));
}

void ReportBook(const Modules& modules, Report& report, ULONG rows, int rounds) {
    report.Begin("one address book, per row");
    Measured ours, floors;
    MeasureBook(modules, rows, rounds, ours, floors);
    report.Add("counting, ns", rows, ours.counting, floors.counting);
    report.Add("counting again, ns", rows, ours.recounting, floors.recounting);
    report.Add("filling, ns", rows, ours.filling, floors.filling);
    report.Add("closing, ns", rows, ours.closing, floors.closing);
    report.Add("heap, bytes", rows, ours.bytes, floors.bytes);
}

void ReportGrowth(const Modules& modules, Report& report, const char* section, ULONG largest, int rounds) {
    report.Begin(section);
    for (ULONG rows = std::max<ULONG>(largest / 1000, 1); rows <= largest; rows *= 10) {
        Measured ours, floors;
        MeasureBook(modules, rows, RoundsFor(rows, largest, rounds), ours, floors);
        report.Add("counting, ns", rows, ours.counting, floors.counting);
        report.Add("filling, ns", rows, ours.filling, floors.filling);
    }
}

void ReportHierarchies(const Modules& modules, Report& report, ULONG largest, int rounds) {
    report.Begin("hierarchies, per container");
    const struct {
        const char* name;
        ULONG branching;  // 0: all side by side
    } shapes[] = {{"wide", 0}, {"deep", 1}, {"mixed", 10}};
    for (const auto& shape : shapes) {
        for (const ULONG containers : {largest / 10, largest}) {
            modules.book.containers = containers;
            modules.book.branching = shape.branching != 0 ? shape.branching : containers;
            Series counting, filling;
            std::vector<AddressBookRecord> records(containers);
            for (int round = 0; round < rounds; ++round) {
                Session session(modules);
                uint32_t count = 0;
                counting.Add(TimePer(
                    containers, [&] { modules.listBooks(session.handle, 0, session.book.entry, &count, nullptr); }));
                Require(count == containers, "counting the containers");
                const unsigned long long calls = modules.book.calls;
                const RecordListDescriptor descriptor{sizeof(AddressBookRecord), {}, records.data()};
                filling.Add(TimePer(containers, [&] {
                    modules.listBooks(session.handle, 0, session.book.entry, &count, &descriptor);
                }));
                uint32_t again = 0;
                modules.listBooks(session.handle, 0, session.book.entry, &again, nullptr);
                Require(again == containers && modules.book.calls == calls, "descending again without the provider");
            }
            report.Add(std::string(shape.name) + ": counting, ns", containers, counting);
            report.Add(std::string(shape.name) + ": filling, ns", containers, filling);
        }
    }
    modules.book.containers = 0;
    modules.book.branching = 1;
}

void ReportGroups(const Modules& modules, Report& report, ULONG largest, int rounds) {
    report.Begin("a group, per member");
    modules.book.rows = 100;  // of which the last five are groups
    for (const ULONG members : {largest / 10, largest}) {
        modules.book.members = members;
        Series counting, filling, details, detailsAgain;
        std::vector<GroupMemberRecord> records(members);
        for (int round = 0; round < rounds; ++round) {
            Session session(modules);
            std::vector<DestinationRecord> destinations(session.Count());
            std::vector<DestinationRecord*> addresses;
            for (DestinationRecord& record : destinations) addresses.push_back(&record);
            session.Fill(addresses);
            const DestinationEntry group = destinations.back().entry;
            uint32_t count = 0;
            counting.Add(TimePer(members, [&] { modules.expandGroup(session.handle, 0, group, &count, nullptr); }));
            Require(count == members, "counting the members");
            const RecordListDescriptor descriptor{0, {}, records.data()};
            int32_t filled = 0;
            filling.Add(
                TimePer(members, [&] { filled = modules.expandGroup(session.handle, 0, group, &count, &descriptor); }));
            Require(filled == 1 && *records.back().name != '\0', "filling the members");
            uint32_t size = 0;
            details.Add(TimePer(members, [&] { modules.showDetails(session.handle, group, &size, nullptr); }));
            std::string text(size, '\0');
            int32_t shown = 0;
            detailsAgain.Add(
                TimePer(members, [&] { shown = modules.showDetails(session.handle, group, &size, text.data()); }));
            Require(shown == 1 && size == members * 20 - 2, "showing the members");
        }
        report.Add("counting, ns", members, counting);
        report.Add("filling, ns", members, filling);
        report.Add("length of the details text, ns", members, details);
        report.Add("details text, ns", members, detailsAgain);
    }
}

}  // namespace

int main(int argc, char** argv) {
    const auto rows = static_cast<ULONG>(argc > 1 ? std::strtoul(argv[1], nullptr, 10) : 1'000'000);
    const int rounds = argc > 2 ? std::atoi(argv[2]) : 7;
    if (rows < 1000 || rounds < 1) Fail("reading the arguments");
    const Modules modules(argv[0]);
    Report report(argc > 3 ? argv[3] : nullptr);
    ReportBook(modules, report, rows, rounds);
    ReportGrowth(modules, report, "growth, per row", rows, rounds);
    modules.book.contentsStyle = 4;
    ReportGrowth(modules, report, "fax entries, per row", rows, rounds);
    modules.book.contentsStyle = S_OK;
    ReportHierarchies(modules, report, rows / 10, rounds);
    ReportGroups(modules, report, rows / 10, rounds);
    return 0;
}
