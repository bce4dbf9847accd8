#include "platform/kit/ComError.h"

#include <string>

#include "platform/kit/Handles.h"
#include "util/Text.h"

#include <oleauto.h>

namespace corvane {

namespace {

std::int32_t ClassicNumber(HRESULT result) {
    // What controls and servers written with the classic numbers raise carries the number itself.
    if (FAILED(result) && HRESULT_FACILITY(result) == FACILITY_CONTROL)
        return HRESULT_CODE(result);
    switch (static_cast<std::uint32_t>(result)) {
        case static_cast<std::uint32_t>(E_INVALIDARG):
        case static_cast<std::uint32_t>(STG_E_INVALIDFUNCTION):
            return ErrorNumber::InvalidProcedureCall;
        case static_cast<std::uint32_t>(DISP_E_OVERFLOW):
            return ErrorNumber::Overflow;
        case static_cast<std::uint32_t>(E_OUTOFMEMORY):
        case static_cast<std::uint32_t>(STG_E_INSUFFICIENTMEMORY):
            return ErrorNumber::OutOfMemory;
        case static_cast<std::uint32_t>(DISP_E_TYPEMISMATCH):
            return ErrorNumber::TypeMismatch;
        case static_cast<std::uint32_t>(STG_E_FILENOTFOUND):
        case static_cast<std::uint32_t>(HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND)):
            return ErrorNumber::FileNotFound;
        case static_cast<std::uint32_t>(E_ACCESSDENIED):
        case static_cast<std::uint32_t>(STG_E_ACCESSDENIED):
            return ErrorNumber::PermissionDenied;
        case static_cast<std::uint32_t>(STG_E_PATHNOTFOUND):
        case static_cast<std::uint32_t>(HRESULT_FROM_WIN32(ERROR_PATH_NOT_FOUND)):
            return ErrorNumber::PathNotFound;
        case static_cast<std::uint32_t>(REGDB_E_CLASSNOTREG):
        case static_cast<std::uint32_t>(CO_E_CLASSSTRING):
        case static_cast<std::uint32_t>(CO_E_SERVER_EXEC_FAILURE):
        case static_cast<std::uint32_t>(CO_E_APPNOTFOUND):
            return ErrorNumber::CannotCreateObject;
        case static_cast<std::uint32_t>(HRESULT_FROM_WIN32(RPC_S_SERVER_UNAVAILABLE)):
            return ErrorNumber::RemoteServerUnavailable;
        default:
            return 0;
    }
}

std::wstring SystemText(HRESULT result) {
    wchar_t* buffer = nullptr;
    const DWORD length = FormatMessageW(
        FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS,
        nullptr, static_cast<DWORD>(result), 0, reinterpret_cast<wchar_t*>(&buffer), 0, nullptr);
    const UniqueLocalMemory owner(buffer);
    std::wstring_view text(buffer, length);
    const auto last = text.find_last_not_of(L"\r\n ");
    return std::wstring(last == std::wstring_view::npos ? std::wstring_view()
                                                        : text.substr(0, last + 1));
}

}  // namespace

RuntimeError ErrorFromHResult(HRESULT result) {
    if (const std::int32_t classic = ClassicNumber(result))
        return MakeRuntimeError(classic);
    RuntimeError error = MakeRuntimeError(result);
    if (const std::wstring text = SystemText(result); !text.empty())
        error.description = text;
    return error;
}

void ThrowIfFailed(HRESULT result) {
    if (FAILED(result))
        throw ErrorFromHResult(result);
}

}  // namespace corvane
