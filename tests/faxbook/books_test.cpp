// How a user names an address book.
#include "client/books.h"

#include <gtest/gtest.h>

#include "client/client_error.h"

namespace {

// Company (Sales (Export), sales, Up/Down), Company, PRIVATE, Strand\1
Books SampleBooks() {
    Books books;
    const Book company = books.Add(nullptr, "Company");
    const Book sales = books.Add(&company, "Sales");
    books.Add(&sales, "Export");
    books.Add(&company, "sales");
    books.Add(&company, "Up/Down");
    books.Add(nullptr, "Company");
    books.Add(nullptr, "PRIVATE");
    books.Add(nullptr, "Strand\\1");
    return books;
}

std::string Found(std::string_view wanted) {
    try {
        return PathText(FindBook(SampleBooks(), wanted));
    } catch (const ClientError& failure) {
        return failure.what();
    }
}

}  // namespace

TEST(BooksTest, ABookIsFoundByPathOrEndOfPathExactLettersFirst) {
    const char* const cases[][2] = {
        {"Company", "Company"},      // the whole path wins over the other book's name
        {"Company#2", "Company#2"},  // a name that stands twice
        {"Sales", "Company/Sales"},  // exact letters win over the same name in small ones
        {"sales", "Company/sales"},
        {"Sales/Export", "Company/Sales/Export"},
        {"company/SALES/export", "Company/Sales/Export"},
        {"private", "PRIVATE"},
        {"Up\\/Down", "Company/Up\\/Down"},  // a slash in a name is escaped
        {"STRAND\\\\1", "Strand\\\\1"},
        {"Strand\\1", "Strand\\\\1"},  // a backslash need not be where it is not misread
    };
    for (const auto& [wanted, path] : cases) EXPECT_EQ(Found(wanted), path) << wanted;
}

TEST(BooksTest, AnUnknownOrAmbiguousNameListsWhatThereIs) {
    EXPECT_EQ(Found("SALES"),
              "more than one address book is called \"SALES\"; name one by its path: Company/Sales, Company/sales");
    for (const char* unknown : {"Nowhere", "", "Up/Down", "Export/Sales", "Company/"}) {
        EXPECT_EQ(Found(unknown), "there is no address book \"" + std::string(unknown) +
                                      "\"; there are: Company, Company/Sales, Company/Sales/Export, Company/sales, "
                                      "Company/Up\\/Down, Company#2, PRIVATE, Strand\\\\1");
    }
    EXPECT_THROW(FindBook({}, "Company"), ClientError);
}
