// The address books of a session and the containers below them, and how a user names one of them.
//
// A book's path is the names from the top down to it, joined by slashes; a slash or backslash inside a name has a
// backslash before it. Two books that would have the same path are told apart by "#2", "#3" and so on behind the name.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "client/library_session.h"

struct Book {
    std::vector<std::string> path;  // of unescaped names; different for every book
    std::string name;
    AddressBookEntry entry = nullptr;
    bool isContainer = false;
    std::string serviceName;     // of the address book, also in its containers
    uint32_t providerValue = 0;  // likewise
};

// In the order in which they were added.
class Books {
  public:
    // Adds a book below another one, or at the top for a null parent, and gives it its path.
    Book& Add(const Book* parent, std::string name);

    bool empty() const { return books_.empty(); }
    size_t size() const { return books_.size(); }
    const Book& operator[](size_t position) const { return books_[position]; }
    auto begin() const { return books_.begin(); }
    auto end() const { return books_.end(); }

  private:
    std::vector<Book> books_;
    std::map<std::string, int> copies_;  // of the book of each path: the number that the next one of its name may have
};

Books ReadBooks(LibrarySession& session);

std::string PathText(const Book& book);

// The book of that path, or of that end of a path; by exact letters first, then without regard to case. Throws
// ClientError with what there is when there is none or more than one.
const Book& FindBook(const Books& books, std::string_view wanted);
