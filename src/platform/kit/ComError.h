#pragma once

#include "platform/kit/Windows.h"
#include "util/RuntimeError.h"

namespace corvane {

// The run-time error for a failed HRESULT: a classic number where there is one, else the signed
// HRESULT with the system's text.
[[nodiscard]] RuntimeError ErrorFromHResult(HRESULT result);

// Raises it when the result is a failure.
void ThrowIfFailed(HRESULT result);

}  // namespace corvane
