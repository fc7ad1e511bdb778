// Names of directory entries: which spellings are one name, and which are not.
#include <gtest/gtest.h>

#include "cards/distinguished_name.h"
#include "text/byte_escapes.h"

namespace {

std::string Normalised(std::string_view text) {
    const std::optional<std::vector<RelativeName>> name = ParseName(text);
    return name ? NormalisedName(*name) : "no name";
}

TEST(DistinguishedNames, AllSpellingsOfANameAreOne) {
    struct Name {
        const char* normalised;
        std::initializer_list<const char*> spellings;
    };
    const Name names[] = {
        {"", {"", "  "}},
        {"cn=ann lee,o=acme,c=de",
         {"cn=Ann Lee,o=Acme,c=DE", "CN = Ann  Lee , O=ACME;C=de", "commonName=\\41nn Lee,2.5.4.10=acme,OID.2.5.4.6=De",
          "cn=\"Ann Lee\",o=\"acme\",c=de", "cn=#0C07416E6E204C6565,o=#130441636D65,c=de",
          "cn=\\20Ann Lee\\ ,o=acme,c=de"}},
        {"cn=lee\\2c ann,o=a\\2bb",
         {"cn=Lee\\, Ann,o=A\\+B", "cn=Lee\\2c Ann,o=A\\2BB", "cn=\"Lee, Ann\",o=\"A+B\"", "cn=Lee, Ann,o=A+B"}},
        {"cn=ann+uid=7,dc=x", {"cn=Ann+uid=7,dc=x", "UID=7 + CN=Ann,DC=X", "userid=7+cn=ann,domainComponent=x"}},
        {"cn=j\\c3\\bcrgen gro\\c3\\9f", {"cn=Jürgen Groß", "CN=JÜRGEN GROß", "cn=J\\C3\\BCrgen Gro\\c3\\9F"}},
        {"cn=\\cf\\83\\d0\\b8\\c5\\82", {"cn=ΣИŁ", "cn=σиł"}},
        {"cn=a\\22b\\5c\\3c\\3e\\3b\\3d\\23", {"cn=a\\\"b\\\\\\<\\>\\;\\=\\#", "cn=a\"b\\5C<>\\3b=#"}},
        {"cn=\\00 b", {"cn=\\00\\0Ab\\0d"}},
        {"cn=", {"cn=", "cn= "}},
        {"cn=a\\5c", {"cn=a\\"}},
        {"no name", {"Ann Lee", "=x", ",cn=x", "c n=x", "<GUID=1>,cn=x", "+cn=x"}},
    };
    for (const Name& name : names)
        for (const char* spelling : name.spellings) EXPECT_EQ(Normalised(spelling), name.normalised) << spelling;
}

TEST(DistinguishedNames, OtherNamesStayOthers) {
    const char* const names[] = {"cn=ann,o=x",  "cn=ann+o=x",   "o=x,cn=ann", "cn=ann\\,o\\=x", "cn=ann",
                                 "cn=ann b",    "cn=annb",      "uid=ann",    "cn=花子",        "cn=太郎",
                                 "cn=#0401",    "cn=\\#0401",   "cn=a,cn=b",  "cn=a+cn=b",      "cn=\xC3",
                                 "cn=\\C3\\83", "cn=#30030101", "cn=#04",     "cn=#0482FFFF41"};
    for (const char* left : names)
        for (const char* right : names)
            EXPECT_EQ(Normalised(left) == Normalised(right), left == right) << left << " and " << right;
}

TEST(DistinguishedNames, AreTakenApartAndShown) {
    const std::vector<RelativeName> name = ParseName("CN=Lee\\, Ann + UID=7,dc=x").value();
    ASSERT_EQ(name.size(), 2U);
    ASSERT_EQ(name[0].size(), 2U);
    EXPECT_EQ(name[0][0].type, "cn");
    EXPECT_EQ(name[0][0].value, "Lee, Ann ");
    EXPECT_EQ(name[0][1].value, "7");
    EXPECT_EQ(WithLetters(Normalised("cn=花子 Groß\\, \\22")), "cn=花子 groß\\2c \\22");
    EXPECT_EQ(WithLetters("cn=\\ff"), "cn=\\ff");
}

}  // namespace
