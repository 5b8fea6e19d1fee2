#include "system/project_directories.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using orvix::gsl::system::Directories;
using orvix::gsl::system::gprj_list_directories;
using Names = std::vector<std::string>;

Names names_of(const char* list, Directories usual) {
    Names names = {"before"};
    EXPECT_TRUE(gprj_list_directories("c:\\site", list, usual, &names));
    return names;
}

TEST(GprjListDirectories, WithoutAListGivesTheUsualOnes) {
    for (const char* none : {static_cast<const char*>(nullptr), ""}) {
        EXPECT_EQ(names_of(none, Directories::all),
                  (Names{"c:\\site\\data", "c:\\site\\networks", "c:\\site\\synthesis", "c:\\site\\verification"}));
        EXPECT_EQ(names_of(none, Directories::required), (Names{"c:\\site\\data", "c:\\site\\networks"}));
    }
}

TEST(GprjListDirectories, ListIsTakenWholeWhateverIsUsual) {
    for (const Directories usual : {Directories::all, Directories::required}) {
        EXPECT_EQ(names_of("b;a/;;c\\ ! d", usual), (Names{"c:\\site\\b", "c:\\site\\a", "c:\\site\\c\\ "}));
    }
}

}  // namespace
