#pragma once

#include <gtest/gtest.h>

#include <string>

#include "check/report/MaskedText.h"
#include "check/report/Masking.h"

namespace corvane::test {

// A text that is worded anew, and has no form any more, would be hidden in a report.
inline void ExpectMaskable(const std::wstring& text) {
    Masking masking;
    EXPECT_FALSE(MaskedText(text, masking).starts_with(L"(hidden")) << testing::PrintToString(text);
}

}  // namespace corvane::test
