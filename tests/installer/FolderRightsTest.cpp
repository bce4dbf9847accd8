#include <gtest/gtest.h>

#include "installer/FolderRights.h"

namespace corvane::installer {
namespace {

struct Case {
    const char* name;
    const wchar_t* rights;
    bool againstExchange;
    bool againstWriting;
};

class FolderRightsTest : public testing::TestWithParam<Case> {};

TEST_P(FolderRightsTest, TellsWhoCouldDoHarm) {
    const Case& each = GetParam();
    const Descriptor descriptor(each.rights);
    ASSERT_TRUE(descriptor.owner());

    EXPECT_EQ(IsGuarded(descriptor.owner(), descriptor.rights(), Harm::exchange),
              each.againstExchange);
    EXPECT_EQ(IsGuarded(descriptor.owner(), descriptor.rights(), Harm::write), each.againstWriting);
}

INSTANTIATE_TEST_SUITE_P(
    Folders, FolderRightsTest,
    testing::Values(
        Case{"OfThisSetup", programFolderRights, true, true},
        Case{"OfTheLog", logFolderRights, true, true},
        // Users append, and do nothing else.
        Case{"TheLogItself", logFileRights, true, false},
        // As Windows makes a folder below C:\ for an administrator.
        Case{"BelowTheDrive",
             L"O:BAD:AI(A;OICIID;FA;;;BA)(A;OICIID;FA;;;SY)(A;OICIID;0x1200a9;;;BU)"
             L"(A;ID;0x1301bf;;;AU)(A;OICIIOID;SDGXGWGR;;;AU)",
             false, false},
        Case{"ProgramFiles",
             L"O:S-1-5-80-956008885-3418522649-1831038044-1853292631-2271478464"
             L"D:PAI(A;;0x1301bf;;;SY)(A;OICIIO;GA;;;SY)(A;;0x1301bf;;;BA)(A;OICIIO;GA;;;BA)"
             L"(A;;0x1200a9;;;BU)(A;OICIIO;GXGR;;;BU)(A;OICIIO;GA;;;CO)",
             true, true},
        // As in common application data: users make files, and own what they make.
        Case{"UsersMakeFiles", L"O:SYD:P(A;;FA;;;SY)(A;CI;0x100116;;;BU)(A;OICIIO;GA;;;CO)", true,
             false},
        Case{"OfAUser", L"O:S-1-5-21-1-2-3-1001D:P(A;;FA;;;BA)", false, false},
        Case{"OfEverybody", L"O:BAD:P(A;;FA;;;WD)", false, false},
        Case{"DeletedByUsers", L"O:BAD:P(A;;FA;;;BA)(A;;SD;;;BU)", false, false},
        Case{"ItsRightsChangedByUsers", L"O:BAD:P(A;;FA;;;BA)(A;;WD;;;BU)", false, false},
        Case{"OwnerChangedByUsers", L"O:BAD:P(A;;FA;;;BA)(A;;WO;;;BU)", false, false},
        Case{"EntriesDeletedByUsers", L"O:BAD:P(A;;FA;;;BA)(A;;0x40;;;BU)", false, false},
        Case{"GenericWrite", L"O:BAD:P(A;;FA;;;BA)(A;;GW;;;BU)", true, false},
        Case{"GenericAll", L"O:BAD:P(A;;FA;;;BA)(A;;GA;;;AU)", false, false},
        Case{"DeniedToUsers", L"O:BAD:P(D;;FA;;;BU)(A;;FA;;;BA)", true, true},
        Case{"WhatIsMadeInItIsEverybodys", L"O:BAD:P(A;;FA;;;BA)(A;OICIIO;FA;;;AU)", false, false},
        Case{"NoListOfRights", L"O:BA", false, false}),
    [](const testing::TestParamInfo<Case>& each) { return each.param.name; });

}  // namespace
}  // namespace corvane::installer
