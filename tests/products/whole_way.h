// What a fax program and what "faxbook check" do with all address books, through the built libraries.
#pragma once

#include <windows.h>

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <span>

#include "qdxl7ra.h"
#include "qdxl7rc.h"

// What came out of it.
struct Answers {
    size_t count = 0;  // of destinations, or of cards
    size_t bytes = 0;  // of text that was told: messages, and what became of each number
    // Met so far, of the destinations.
    std::uint32_t persons = 0;
    std::uint32_t groups = 0;
};

class WholeWay {
  public:
    // The libraries of this folder, which stay loaded; so does the provider, by a session of its own.
    explicit WholeWay(const std::filesystem::path& libraries);

    // The address books of the folder: their containers, the destinations of each counted and filled, then of a few the
    // details, and the members of a few groups.
    Answers List(const std::filesystem::path& contacts) const;
    // What VOKDiagnose says of them.
    Answers Diagnose(const std::filesystem::path& contacts) const;

  private:
    void ListBooks(SessionHandle* session, AddressBookEntry parent, Answers& answers) const;
    void ListDestinations(SessionHandle* session, AddressBookEntry book, Answers& answers) const;
    void LookAt(SessionHandle* session, const DestinationRecord& record) const;

    HMODULE library_;
    HMODULE provider_;
#define EXPORTED(name) decltype(::name)* name##_
    EXPORTED(OpenAddressBook);
    EXPORTED(CloseAddressBook);
    EXPORTED(GetAddressBookList);
    EXPORTED(GetDestinationList);
    EXPORTED(GetDestinationDetails);
    EXPORTED(GetDestinationsInGroup);
#undef EXPORTED
    VOKDiagnoseFunction* diagnose_;
};
