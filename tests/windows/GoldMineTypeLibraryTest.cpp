#include "platform/goldmine/GoldMineTypeLibrary.h"

#include <gtest/gtest.h>

#include "platform/kit/ComApartment.h"
#include "unit/TestErrors.h"
#include "windows/AutomationServer.h"
#include "windows/RegistrySandbox.h"

namespace corvane::test {
namespace {

constexpr std::int32_t cannotCreateObject = 429;

class GoldMineTypeLibraryTest : public testing::Test {
protected:
    ComApartment apartment;
};

TEST_F(GoldMineTypeLibraryTest, ClassMethodAndEventAreFoundFromTheInterfaceIdAlone) {
    const LibraryRegistration registration(LibraryFlavour::Complete);

    const GoldMineIdentifiers found = ReadGoldMineTypeLibrary();

    // Another class stands before this one, with another event of the same name.
    EXPECT_TRUE(IsEqualCLSID(found.automationClass, askedClass));
    EXPECT_EQ(found.commandMethod, 77);
    EXPECT_TRUE(IsEqualIID(found.eventInterface, askEvents));
    EXPECT_EQ(found.windowUpDown, 41);
}

TEST_F(GoldMineTypeLibraryTest, ClassWithoutEventsStillTakesCommands) {
    const LibraryRegistration registration(LibraryFlavour::WithoutEvents);

    const GoldMineIdentifiers found = ReadGoldMineTypeLibrary();

    EXPECT_TRUE(IsEqualCLSID(found.automationClass, askedClass));
    EXPECT_EQ(found.commandMethod, 77);
    EXPECT_TRUE(IsEqualIID(found.eventInterface, IID_NULL));
    EXPECT_EQ(found.windowUpDown, DISPID_UNKNOWN);
}

TEST_F(GoldMineTypeLibraryTest, LibraryWithoutTheClassIsNoRegistration) {
    const LibraryRegistration registration(LibraryFlavour::WithoutClass);

    const RuntimeError error = ErrorOf([] { static_cast<void>(ReadGoldMineTypeLibrary()); });

    EXPECT_EQ(error.number, cannotCreateObject);
    EXPECT_EQ(error.description, L"ActiveX component can't create object");
}

TEST_F(GoldMineTypeLibraryTest, MissingRegistrationIsThatTheObjectCannotBeCreated) {
    const RegistrySandbox empty(HKEY_CLASSES_ROOT);

    const RuntimeError error = ErrorOf([] { static_cast<void>(ReadGoldMineTypeLibrary()); });

    EXPECT_EQ(error.number, cannotCreateObject);
    EXPECT_EQ(error.description, L"ActiveX component can't create object");
}

}  // namespace
}  // namespace corvane::test
