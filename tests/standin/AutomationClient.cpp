#include "AutomationClient.h"

#include <gtest/gtest.h>

#include <memory>

#include "support/windows/Encoding.h"
#include "support/windows/PracticeGoldMine.h"

namespace standin_tests {

using namespace test_support;
using Microsoft::WRL::ComPtr;

const Flavour ordinary = {ordinaryGoldMine,
                          L"PracticeGoldMine.UserInterface",
                          L"{5D0C6E10-3F0B-4B0E-9A53-6C1B7F3E9A01}",
                          L"e.1",
                          L"ExecuteCommand",
                          1,
                          L"{5D0C6E12-3F0B-4B0E-9A53-6C1B7F3E9A01}",
                          1};
const Flavour other = {otherGoldMine,
                       L"OtherPracticeGoldMine.Workplace",
                       L"{A7F4D2B0-91C6-4E2D-8B67-20D5E8C4F511}",
                       L"1b.5",
                       L"Perform",
                       731,
                       L"{A7F4D2B4-91C6-4E2D-8B67-20D5E8C4F511}",
                       4711};

namespace {

// COM for the whole test program.
class Apartment : public testing::Environment {
public:
    void SetUp() override {
        ASSERT_TRUE(SUCCEEDED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED)));
    }
    void TearDown() override { CoUninitialize(); }
};
const testing::Environment* const apartment =
    testing::AddGlobalTestEnvironment(std::make_unique<Apartment>().release());

}  // namespace

HRESULT EventRecorder::QueryInterface(REFIID id, void** object) {
    if (id != IID_IUnknown && id != IID_IDispatch && id != eventsId_) {
        *object = nullptr;
        return E_NOINTERFACE;
    }
    *object = this;
    AddRef();
    return S_OK;
}

ULONG EventRecorder::Release() {
    const ULONG left = --references_;
    if (left == 0)
        delete this;
    return left;
}

HRESULT EventRecorder::GetTypeInfoCount(UINT* count) {
    *count = 0;
    return S_OK;
}

HRESULT EventRecorder::GetTypeInfo(UINT, LCID, ITypeInfo** info) {
    *info = nullptr;
    return E_NOTIMPL;
}

HRESULT EventRecorder::GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) {
    return E_NOTIMPL;
}

HRESULT EventRecorder::Invoke(DISPID member, REFIID, LCID, WORD, DISPPARAMS* parameters, VARIANT*,
                              EXCEPINFO*, UINT*) {
    if (member != member_) {
        ++others;
        return S_OK;
    }
    if (parameters->cArgs != 3 || parameters->rgvarg[2].vt != VT_BSTR ||
        parameters->rgvarg[1].vt != VT_BOOL || parameters->rgvarg[0].vt != VT_I4) {
        return DISP_E_BADVARTYPE;
    }
    const Event event{parameters->rgvarg[2].bstrVal, parameters->rgvarg[1].boolVal != VARIANT_FALSE,
                      parameters->rgvarg[0].lVal};
    events.push_back(event);
    if (onEvent)
        onEvent(event);
    return S_OK;
}

Client::Client(const Flavour& flavour) {
    CLSID classId{};
    EXPECT_EQ(CLSIDFromProgID(flavour.programId, &classId), S_OK);
    EXPECT_EQ(CoCreateInstance(classId, nullptr, CLSCTX_LOCAL_SERVER, IID_PPV_ARGS(&object_)),
              S_OK);
    if (!object_)
        return;
    std::wstring method = flavour.method;
    LPOLESTR name = method.data();
    EXPECT_EQ(object_->GetIDsOfNames(IID_NULL, &name, 1, LOCALE_USER_DEFAULT, &member_), S_OK);
    EXPECT_EQ(member_, flavour.methodMember);

    IID eventsId{};
    EXPECT_EQ(IIDFromString(flavour.eventsId, &eventsId), S_OK);
    recorder_ = new EventRecorder(eventsId, flavour.eventMember);
    ComPtr<IConnectionPointContainer> container;
    EXPECT_EQ(object_.As(&container), S_OK);
    if (container) {
        EXPECT_EQ(container->FindConnectionPoint(eventsId, &point_), S_OK);
    }
    if (point_) {
        EXPECT_EQ(point_->Advise(recorder_.Get(), &cookie_), S_OK);
    }
}

Client::~Client() {
    if (point_ && cookie_ != 0)
        point_->Unadvise(cookie_);
}

Reply Client::TrySend(const std::wstring& command) {
    Reply reply;
    if (!object_)
        return reply;
    VARIANT argument;
    VariantInit(&argument);
    argument.vt = VT_BSTR;
    argument.bstrVal = SysAllocStringLen(command.data(), static_cast<UINT>(command.size()));
    DISPPARAMS parameters{&argument, nullptr, 1, 0};
    VARIANT result;
    VariantInit(&result);
    reply.result = object_->Invoke(member_, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD,
                                   &parameters, &result, &reply.exception, nullptr);
    if (result.vt == VT_BSTR && result.bstrVal)
        reply.text.assign(result.bstrVal, SysStringLen(result.bstrVal));
    const auto take = [](BSTR& text) {
        const std::wstring taken = text ? text : L"";
        SysFreeString(text);
        text = nullptr;
        return taken;
    };
    reply.source = take(reply.exception.bstrSource);
    reply.description = take(reply.exception.bstrDescription);
    take(reply.exception.bstrHelpFile);
    VariantClear(&argument);
    VariantClear(&result);
    return reply;
}

std::wstring Client::Send(const std::wstring& command) {
    const Reply reply = TrySend(command);
    EXPECT_EQ(reply.result, S_OK) << Utf8(command.substr(0, 200));
    return reply.text;
}

std::wstring Client::Ask(const std::wstring& call, const Arguments& arguments) {
    std::wstring content;
    for (const auto& [name, value] : arguments)
        content += gmapi::Data(name, gmapi::Escaped(value));
    return Send(gmapi::Call(call, content));
}

std::wstring Client::Value(const std::wstring& call, const Arguments& arguments) {
    const std::wstring reply = Ask(call, arguments);
    const std::wstring start = L"<GMAPI call=\"" + call + L"\"><status code=\"1\">";
    EXPECT_EQ(reply.substr(0, start.size()), start) << Utf8(reply);
    return Between(reply, start, L"</status>");
}

void Client::Watch(bool on) {
    EXPECT_EQ(Send(gmapi::Register(on ? L"1" : L"0")),
              gmapi::Reply(L"RegisterWindowUpDown", L"1", L"Success"));
}

HRESULT Client::ListenAgain() {
    DWORD cookie = 0;
    const HRESULT result = point_->Advise(recorder_.Get(), &cookie);
    return FAILED(result) ? result : point_->Unadvise(cookie);
}

std::wstring Between(const std::wstring& text, const std::wstring& start, const std::wstring& end) {
    const size_t from = text.find(start);
    const size_t to = from == std::wstring::npos ? from : text.find(end, from + start.size());
    if (to == std::wstring::npos)
        return L"<not there>";
    return gmapi::Unescaped(
        gmapi::Unescaped(text.substr(from + start.size(), to - from - start.size())));
}

}  // namespace standin_tests
