// Which names are offered for one that was not found.
#include "client/name_lists.h"

#include <gtest/gtest.h>

using Names = std::vector<std::string>;

TEST(NameListsTest, NearNamesContainTheWordOrDifferByAFewLetters) {
    const Names names = {"Zoë Müller", "Ada Winterfeld", "Ada Winterfeld", "ADA SUMMERFIELD", "山田 花子", "Bo"};
    EXPECT_EQ(NearNames("ada", names), (Names{"ADA SUMMERFIELD", "Ada Winterfeld"}));
    EXPECT_EQ(NearNames("ada winterfel", names), (Names{"Ada Winterfeld"}));
    EXPECT_EQ(NearNames("Zoe Mueller", names), (Names{"Zoë Müller"}));
    EXPECT_EQ(NearNames("山田 花", names), (Names{"山田 花子"}));
    EXPECT_EQ(NearNames("Ba", names), (Names{"Bo"}));
    EXPECT_EQ(NearNames("Nobody at all", names), Names());
    EXPECT_EQ(NearNames("", names), Names());
}

TEST(NameListsTest, ALongListIsCutAndSaysSo) {
    EXPECT_EQ(JoinNames({"A", "B"}), "A, B");
    EXPECT_EQ(JoinNames(Names(15, "N")), "N, N, N, N, N, N, N, N, N, N, N, N and 3 more");
}
