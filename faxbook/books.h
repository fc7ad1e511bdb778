// The address books of a session and the containers below them, and how a user names one of them.
//
// A book's path is the names from the top down to it, joined by slashes; a slash or backslash inside a name has a
// backslash before it. Two books that would have the same path are told apart by "#2", "#3" and so on behind the name.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "session.h"

struct Book {
    std::vector<std::string> path;  // of unescaped names; different for every book
    std::string name;
    AddressBookEntry entry = nullptr;
    bool isContainer = false;
    std::string serviceName;     // of the address book, also in its containers
    uint32_t providerValue = 0;  // likewise
};

using Books = std::vector<Book>;

// Adds a book below another one, or at the top for a null parent, and gives it its path.
Book& AddBook(Books& books, const Book* parent, std::string name);

Books ReadBooks(LibrarySession& session);

std::string PathText(const Book& book);

// The book of that path, or of that end of a path; by exact letters first, then without regard to case. Throws
// CommandFailure with what there is when there is none or more than one.
const Book& FindBook(const Books& books, std::string_view wanted);
