// instruction_bench: counts and fills one address book of 100,000 rows once, for a tool that counts instructions.
#include "bench_session.h"

int main(int, char** argv) {
    const Modules modules(argv[0]);
    modules.book.rows = 100'000;
    const Session session(modules);
    std::vector<DestinationRecord> records(session.Count());
    std::vector<DestinationRecord*> addresses;
    addresses.reserve(records.size());
    for (DestinationRecord& record : records) addresses.push_back(&record);
    session.Fill(addresses);
    std::printf("%zu records\n", records.size());
    return 0;
}
