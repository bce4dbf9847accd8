#pragma once

#include <string>

#include "support/Gmapi.h"

namespace corvane::test {

// GoldMine is asked to tell of the Complete Call dialog, then no longer; it agrees to both.
inline const std::wstring watchDialog = test_support::Gmapi<wchar_t>::Register(L"1");
inline const std::wstring unwatchDialog = test_support::Gmapi<wchar_t>::Register(L"0");
inline const std::wstring dialogWatched =
    test_support::Gmapi<wchar_t>::Reply(L"RegisterWindowUpDown", L"1", L"Success");

}  // namespace corvane::test
