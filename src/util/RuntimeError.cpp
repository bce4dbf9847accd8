#include "util/RuntimeError.h"

namespace corvane {

namespace {

std::wstring_view ClassicDescription(std::int64_t number) {
    switch (number) {
        case ErrorNumber::InvalidProcedureCall:
            return L"Invalid procedure call or argument";
        case ErrorNumber::Overflow:
            return L"Overflow";
        case ErrorNumber::OutOfMemory:
            return L"Out of memory";
        case ErrorNumber::TypeMismatch:
            return L"Type mismatch";
        case ErrorNumber::FileNotFound:
            return L"File not found";
        case ErrorNumber::PermissionDenied:
            return L"Permission denied";
        case ErrorNumber::PathNotFound:
            return L"Path not found";
        case ErrorNumber::InvalidPropertyValue:
            return L"Invalid property value";
        case ErrorNumber::CannotCreateObject:
            return L"ActiveX component can't create object";
        case ErrorNumber::RemoteServerUnavailable:
            return L"The remote server machine does not exist or is unavailable";
        default:
            return L"Application-defined or object-defined error";
    }
}

}  // namespace

RuntimeError MakeRuntimeError(std::int64_t number) {
    RuntimeError error;
    error.number = number;
    error.description = ClassicDescription(number);
    return error;
}

std::wstring RuntimeErrorText(const RuntimeError& error) {
    return L"Run-time error '" + std::to_wstring(error.number) + L"':\r\n\r\n" + error.description;
}

}  // namespace corvane
