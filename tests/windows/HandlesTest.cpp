#include "platform/kit/Handles.h"

#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

#include "support/windows/TemporaryFolder.h"

namespace corvane::test {
namespace {

std::vector<HANDLE> closed;

void NoteClosed(HANDLE handle) {
    closed.push_back(handle);
}

using Noted = Unique<HANDLE, &NoteClosed>;
using Closed = std::vector<HANDLE>;

HANDLE Number(LONG_PTR value) {
    return reinterpret_cast<HANDLE>(value);
}

class UniqueTest : public testing::Test {
protected:
    UniqueTest() { closed.clear(); }
};

TEST_F(UniqueTest, IsClosedOnceAtTheEndOfItsLife) {
    {
        const Noted one(Number(1));
        EXPECT_TRUE(one);
        EXPECT_EQ(one.get(), Number(1));
        EXPECT_EQ(closed, Closed{});
    }
    EXPECT_EQ(closed, Closed{Number(1)});
}

TEST_F(UniqueTest, NeitherOfTheValuesForNoneIsClosed) {
    {
        const Noted never;
        const Noted null(nullptr);
        const Noted invalid(INVALID_HANDLE_VALUE);
        EXPECT_FALSE(never);
        EXPECT_FALSE(null);
        EXPECT_FALSE(invalid);
        EXPECT_EQ(invalid.get(), nullptr);
    }
    EXPECT_EQ(closed, Closed{});
}

TEST_F(UniqueTest, WhatWasMovedIsClosedByItsNewOwnerAlone) {
    {
        Noted first(Number(1));
        {
            const Noted second(std::move(first));
            EXPECT_FALSE(first);
            EXPECT_EQ(second.get(), Number(1));
        }
        EXPECT_EQ(closed, Closed{Number(1)});
    }
    EXPECT_EQ(closed, Closed{Number(1)});
}

TEST_F(UniqueTest, AssigningClosesWhatWasHeldBefore) {
    {
        Noted target(Number(1));
        Noted source(Number(2));
        target = std::move(source);
        EXPECT_EQ(closed, Closed{Number(1)});
        EXPECT_EQ(target.get(), Number(2));
        EXPECT_FALSE(source);
    }
    EXPECT_EQ(closed, (Closed{Number(1), Number(2)}));
}

TEST_F(UniqueTest, AssignedToItselfItStaysOpen) {
    Noted one(Number(1));
    Noted& same = one;
    one = std::move(same);
    EXPECT_EQ(closed, Closed{});
    EXPECT_EQ(one.get(), Number(1));
}

TEST_F(UniqueTest, WhatIsReleasedIsNotClosed) {
    {
        Noted one(Number(1));
        EXPECT_EQ(one.release(), Number(1));
        EXPECT_FALSE(one);
    }
    EXPECT_EQ(closed, Closed{});
}

TEST_F(UniqueTest, WhatAFunctionPutInIsClosed) {
    {
        Noted one;
        *one.put() = Number(1);
        EXPECT_EQ(one.get(), Number(1));
    }
    EXPECT_EQ(closed, Closed{Number(1)});
}

// Each of Windows' own kinds: what it holds is gone after its life.

TEST(HandlesTest, KernelHandleIsClosed) {
    HANDLE event = nullptr;
    DWORD flags = 0;
    {
        const UniqueHandle owner(CreateEventW(nullptr, TRUE, FALSE, nullptr));
        event = owner.get();
        EXPECT_TRUE(GetHandleInformation(event, &flags));
    }
    EXPECT_FALSE(GetHandleInformation(event, &flags));
}

// Nobody can ask a search that is closed: its handle is memory that is gone.
TEST(HandlesTest, SearchThatFindsNothingIsNone) {
    const test_support::TemporaryFolder folder;
    WIN32_FIND_DATAW entry;
    EXPECT_FALSE(UniqueFind(FindFirstFileW(folder.file(L"absent").c_str(), &entry)));
    EXPECT_TRUE(UniqueFind(FindFirstFileW(folder.path().c_str(), &entry)));
}

TEST(HandlesTest, MutexIsGivenBackToOtherThreads) {
    const UniqueHandle mutex(CreateMutexW(nullptr, TRUE, nullptr));
    const auto isFree = [&mutex] {
        DWORD answer = WAIT_FAILED;
        std::thread([&] {
            answer = WaitForSingleObject(mutex.get(), 0);
            if (answer == WAIT_OBJECT_0)
                ReleaseMutex(mutex.get());
        }).join();
        return answer == WAIT_OBJECT_0;
    };
    {
        const UniqueMutexHold hold(mutex.get());
        EXPECT_FALSE(isFree());
    }
    EXPECT_TRUE(isFree());
}

TEST(HandlesTest, RegistryKeyIsClosed) {
    HKEY key = nullptr;
    const auto isOpen = [&key] {
        DWORD subKeys = 0;
        return RegQueryInfoKeyW(key, nullptr, nullptr, nullptr, &subKeys, nullptr, nullptr, nullptr,
                                nullptr, nullptr, nullptr, nullptr) == ERROR_SUCCESS;
    };
    {
        UniqueRegistryKey owner;
        ASSERT_EQ(RegOpenKeyExW(HKEY_CURRENT_USER, L"Software", 0, KEY_READ, owner.put()),
                  ERROR_SUCCESS);
        key = owner.get();
        EXPECT_TRUE(isOpen());
    }
    EXPECT_FALSE(isOpen());
}

TEST(HandlesTest, FontAndRegionAreDeleted) {
    HFONT font = nullptr;
    HRGN region = nullptr;
    {
        const LOGFONTW description{};
        const UniqueFont fontOwner(CreateFontIndirectW(&description));
        const UniqueRegion regionOwner(CreateRectRgn(0, 0, 1, 1));
        font = fontOwner.get();
        region = regionOwner.get();
        EXPECT_EQ(GetObjectType(font), DWORD{OBJ_FONT});
        EXPECT_EQ(GetObjectType(region), DWORD{OBJ_REGION});
    }
    EXPECT_EQ(GetObjectType(font), 0U);
    EXPECT_EQ(GetObjectType(region), 0U);
}

TEST(HandlesTest, ClipboardIsClosed) {
    const HWND window = CreateWindowExW(0, L"Static", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                                        GetModuleHandleW(nullptr), nullptr);
    {
        const UniqueClipboard clipboard(OpenClipboard(window) ? window : nullptr);
        ASSERT_TRUE(clipboard);
        EXPECT_EQ(GetOpenClipboardWindow(), window);
    }
    EXPECT_EQ(GetOpenClipboardWindow(), nullptr);
    DestroyWindow(window);
}

TEST(HandlesTest, GlobalMemoryIsUnlocked) {
    const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, 8);
    {
        EXPECT_NE(GlobalLock(memory), nullptr);
        const UniqueGlobalLock lock(memory);
        EXPECT_EQ(GlobalFlags(memory) & GMEM_LOCKCOUNT, 1U);
    }
    EXPECT_EQ(GlobalFlags(memory) & GMEM_LOCKCOUNT, 0U);
    GlobalFree(memory);
}

TEST(HandlesTest, LocalMemoryIsFreed) {
    HLOCAL memory = nullptr;
    {
        const UniqueLocalMemory owner(LocalAlloc(LMEM_MOVEABLE, 8));
        memory = owner.get();
        EXPECT_NE(LocalFlags(memory), UINT{LMEM_INVALID_HANDLE});
    }
    EXPECT_EQ(LocalFlags(memory), UINT{LMEM_INVALID_HANDLE});
}

}  // namespace
}  // namespace corvane::test
