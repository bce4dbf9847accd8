#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

namespace corvane {

// The classic automation run-time error numbers that support staff know.
namespace ErrorNumber {
inline constexpr std::int32_t InvalidProcedureCall = 5;
inline constexpr std::int32_t Overflow = 6;
inline constexpr std::int32_t OutOfMemory = 7;
inline constexpr std::int32_t TypeMismatch = 13;
inline constexpr std::int32_t FileNotFound = 53;
inline constexpr std::int32_t PermissionDenied = 70;
inline constexpr std::int32_t PathNotFound = 76;
inline constexpr std::int32_t InvalidPropertyValue = 380;
inline constexpr std::int32_t CannotCreateObject = 429;
inline constexpr std::int32_t RemoteServerUnavailable = 462;
// HRESULT 0x800706BE: the server died while it was executing the call.
inline constexpr std::int32_t RemoteProcedureCallFailed = -2147023170;
// 0x80010108: the server let the object go. 0x800401FD: the proxy leads nowhere any more.
inline constexpr std::int32_t ObjectDisconnected = -2147417848;
inline constexpr std::int32_t ObjectNotConnected = -2147220995;
}  // namespace ErrorNumber

// An unexpected run-time error. Expected failures are status lines and false results instead. The
// number and the description are shown; the rest is what an automation error carries besides.
struct RuntimeError {
    // Signed as the platform shows it, but for the one error that is known by its unsigned number.
    std::int64_t number = 0;
    std::wstring source;
    std::wstring description;
    std::wstring helpFile;
    std::int32_t helpContext = 0;
    bool reported = false;  // the user was told in a box of its own
};

// The error with that classic number and the text the platform gives it.
[[nodiscard]] RuntimeError MakeRuntimeError(std::int64_t number);

// Runs a procedure; an error that leaves it is raised again with the procedure's name and ": "
// before its description, everything else unchanged.
template <class Body>
decltype(auto) NamedProcedure(std::wstring_view name, Body&& body) {
    try {
        return std::forward<Body>(body)();
    } catch (RuntimeError& error) {
        error.description.insert(0, std::wstring(name) + L": ");
        throw;
    }
}

// "Run-time error '13':", an empty line, and the description: what the user is shown.
[[nodiscard]] std::wstring RuntimeErrorText(const RuntimeError& error);

}  // namespace corvane
