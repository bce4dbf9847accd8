#include "util/RuntimeError.h"

#include <gtest/gtest.h>

#include "TestErrors.h"

namespace corvane::test {
namespace {

TEST(RuntimeErrorTest, AProceduresNameStandsBeforeTheDescriptionOnly) {
    const RuntimeError original{70, L"source", L"Permission denied", L"help.hlp", 9};

    const RuntimeError raised =
        ErrorOf([&] { NamedProcedure(L"GetFileLink", [&] { throw original; }); });

    EXPECT_EQ(raised.number, 70);
    EXPECT_EQ(raised.source, L"source");
    EXPECT_EQ(raised.description, L"GetFileLink: Permission denied");
    EXPECT_EQ(raised.helpFile, L"help.hlp");
    EXPECT_EQ(raised.helpContext, 9);
}

TEST(RuntimeErrorTest, NestedProceduresNameThemselvesFromTheOutsideInwards) {
    const RuntimeError raised = ErrorOf([] {
        NamedProcedure(L"Outer", [] {
            NamedProcedure(L"Inner", [] { throw RuntimeError{5, {}, L"bad", {}, 0}; });
        });
    });

    EXPECT_EQ(raised.description, L"Outer: Inner: bad");
}

TEST(RuntimeErrorTest, AProcedureThatSucceedsGivesItsValue) {
    EXPECT_EQ(NamedProcedure(L"Any", [] { return 7; }), 7);
}

TEST(RuntimeErrorTest, TheUserSeesNumberEmptyLineAndDescription) {
    EXPECT_EQ(RuntimeErrorText({13, L"source", L"Type mismatch", {}, 0}),
              L"Run-time error '13':\r\n\r\nType mismatch");
    EXPECT_EQ(RuntimeErrorText({-2147023170, {}, L"gone", {}, 0}),
              L"Run-time error '-2147023170':\r\n\r\ngone");
}

TEST(RuntimeErrorTest, TheNumbersAreThoseThatSupportStaffKnow) {
    EXPECT_EQ(ErrorNumber::InvalidProcedureCall, 5);
    EXPECT_EQ(ErrorNumber::Overflow, 6);
    EXPECT_EQ(ErrorNumber::OutOfMemory, 7);
    EXPECT_EQ(ErrorNumber::TypeMismatch, 13);
    EXPECT_EQ(ErrorNumber::FileNotFound, 53);
    EXPECT_EQ(ErrorNumber::PermissionDenied, 70);
    EXPECT_EQ(ErrorNumber::PathNotFound, 76);
    EXPECT_EQ(ErrorNumber::CannotCreateObject, 429);
    EXPECT_EQ(ErrorNumber::RemoteServerUnavailable, 462);
    EXPECT_EQ(ErrorNumber::RemoteProcedureCallFailed, -2147023170);
    EXPECT_EQ(ErrorNumber::ObjectDisconnected, -2147417848);
    EXPECT_EQ(ErrorNumber::ObjectNotConnected, -2147220995);
}

TEST(RuntimeErrorTest, AMadeErrorHasItsNumberAndTheClassicText) {
    const RuntimeError error = MakeRuntimeError(429);

    EXPECT_EQ(error.number, 429);
    EXPECT_EQ(error.description, L"ActiveX component can't create object");
    EXPECT_EQ(MakeRuntimeError(462).description,
              L"The remote server machine does not exist or is unavailable");
    EXPECT_EQ(error.helpContext, 0);
}

}  // namespace
}  // namespace corvane::test
