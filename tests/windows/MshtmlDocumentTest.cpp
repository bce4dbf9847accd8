#include "platform/MshtmlDocument.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "platform/kit/ComApartment.h"
#include "platform/kit/ComError.h"
#include "platform/kit/ComObject.h"
#include "unit/TestErrors.h"
#include "util/BuiltInHtmlDocument.h"
#include "util/RuntimeError.h"

namespace corvane::test {
namespace {

using Microsoft::WRL::ComPtr;

constexpr CLSID htmlDocumentClass = {
    0x25336920, 0x03F9, 0x11CF, {0x8F, 0xD0, 0x00, 0xAA, 0x00, 0x68, 0x6F, 0x13}};

// What the engine of one test was asked, in order, and what it answers.
struct EngineScript {
    std::vector<std::wstring> calls;
    std::map<std::wstring, std::wstring> texts;  // by property, "body.innertext"
    std::map<std::wstring, HRESULT> failures;    // by member
    std::map<std::wstring, VARTYPE> nothings;    // by property: an answer of that type and no value
};

std::wstring LowerCase(std::wstring text) {
    std::transform(text.begin(), text.end(), text.begin(), [](wchar_t character) {
        return character >= L'A' && character <= L'Z'
                   ? static_cast<wchar_t>(character - L'A' + L'a')
                   : character;
    });
    return text;
}

// An object of the engine, found by names whose letter case does not matter.
class EngineObject final : public ComObject<IDispatch> {
public:
    EngineObject(EngineScript& script, std::wstring path, std::vector<std::wstring> members)
        : script_(script), path_(std::move(path)), members_(std::move(members)) {}

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
        *count = 0;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID,
                                            DISPID* ids) override {
        const auto known = std::find(members_.begin(), members_.end(), LowerCase(names[0]));
        if (known == members_.end()) {
            ADD_FAILURE() << "unexpected member";
            return DISP_E_UNKNOWNNAME;
        }
        ids[0] = static_cast<DISPID>(known - members_.begin()) + 1;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID member, REFIID, LCID, WORD kind, DISPPARAMS* parameters,
                                     VARIANT* result, EXCEPINFO*, UINT*) override {
        const std::wstring name = path_ + members_.at(static_cast<std::size_t>(member - 1));
        if (const auto failure = script_.failures.find(name); failure != script_.failures.end())
            return failure->second;
        if (const auto nothing = script_.nothings.find(name);
            nothing != script_.nothings.end() && kind != DISPATCH_PROPERTYPUT) {
            VariantInit(result);
            result->vt = nothing->second;
            return S_OK;
        }
        if (name == L"body" || name == L"documentelement") {
            result->vt = VT_DISPATCH;
            result->pdispVal = MakeComObject<EngineObject>(
                                   script_, name + L".",
                                   std::vector<std::wstring>{L"insertadjacenthtml", L"innerhtml",
                                                             L"innertext", L"outerhtml"})
                                   .Detach();
            return S_OK;
        }
        std::wstring call = name;
        if (kind == DISPATCH_PROPERTYPUT) {
            EXPECT_EQ(parameters->cNamedArgs, 1U);
            EXPECT_EQ(parameters->rgdispidNamedArgs[0], DISPID_PROPERTYPUT);
            call += L" =";
        }
        for (UINT argument = parameters->cArgs; argument-- > 0;)
            call += L" [" + TextOf(parameters->rgvarg[argument]) + L"]";
        script_.calls.push_back(call);
        if (kind == DISPATCH_PROPERTYGET) {
            result->vt = VT_BSTR;
            result->bstrVal = Bstr(script_.texts.at(name)).release();
        }
        return S_OK;
    }

private:
    // MSHTML's write takes its text as an argument or in an array of arguments.
    static std::wstring TextOf(const VARIANT& argument) {
        EXPECT_EQ(argument.vt, VT_BSTR);
        return {argument.bstrVal, SysStringLen(argument.bstrVal)};
    }

    EngineScript& script_;
    std::wstring path_;
    std::vector<std::wstring> members_;
};

class EngineFactory final : public ComObject<IClassFactory> {
public:
    explicit EngineFactory(EngineScript& script) : script_(script) {}
    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown*, REFIID id, void** object) override {
        return MakeComObject<EngineObject>(
                   script_, L"",
                   std::vector<std::wstring>{L"open", L"write", L"close", L"body", L"readystate",
                                             L"documentelement"})
            ->QueryInterface(id, object);
    }
    HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }

private:
    EngineScript& script_;
};

// The test's engine in place of the system's for its life.
class MshtmlDocumentTest : public testing::Test {
protected:
    MshtmlDocumentTest() {
        EXPECT_EQ(
            CoRegisterClassObject(htmlDocumentClass, MakeComObject<EngineFactory>(script).Get(),
                                  CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE, &cookie_),
            S_OK);
    }
    ~MshtmlDocumentTest() override { CoRevokeClassObject(cookie_); }

    ComApartment apartment;
    EngineScript script;

private:
    DWORD cookie_ = 0;
};

TEST_F(MshtmlDocumentTest, FragmentIsInsertedInTheOrderThatTheEngineNeeds) {
    const auto document = MshtmlDocument::Create();
    ASSERT_TRUE(document);

    document->InsertAtStartOfBody(L"<P>old</P>", L"<A href=\"x\">new</A>");

    EXPECT_EQ(script.calls,
              (std::vector<std::wstring>{
                  L"open [about:blank]", L"write [<P>old</P>]",
                  L"body.insertadjacenthtml [afterBegin] [<A href=\"x\">new</A>]", L"close"}));
}

TEST_F(MshtmlDocumentTest, ADocumentIsReadAfterItIsReady) {
    script.texts[L"readystate"] = L"complete";
    script.texts[L"documentelement.outerhtml"] = L"<HTML>all</HTML>";
    const auto document = MshtmlDocument::Create();
    ASSERT_TRUE(document);

    document->InsertAtStartOfBody(L"old", L"new");
    EXPECT_TRUE(document->Complete());
    EXPECT_EQ(document->Serialise(), L"<HTML>all</HTML>");

    EXPECT_EQ(script.calls,
              (std::vector<std::wstring>{L"open [about:blank]", L"write [old]",
                                         L"body.insertadjacenthtml [afterBegin] [new]", L"close",
                                         L"readystate", L"documentelement.outerhtml"}));
}

TEST_F(MshtmlDocumentTest, OnlyTheReadyStateCompleteIsComplete) {
    const auto document = MshtmlDocument::Create();
    ASSERT_TRUE(document);
    for (const wchar_t* state : {L"loading", L"interactive", L"Complete", L""}) {
        script.texts[L"readystate"] = state;
        EXPECT_FALSE(document->Complete()) << state;
    }
    script.texts[L"readystate"] = L"complete";
    EXPECT_TRUE(document->Complete());
}

TEST_F(MshtmlDocumentTest, WholeDocumentIsSerialised) {
    script.texts[L"documentelement.outerhtml"] = L"<HTML><BODY>all</BODY></HTML>";
    const auto document = MshtmlDocument::Create();
    ASSERT_TRUE(document);

    EXPECT_EQ(document->Serialise(), L"<HTML><BODY>all</BODY></HTML>");

    EXPECT_EQ(script.calls, (std::vector<std::wstring>{L"documentelement.outerhtml"}));
}

TEST_F(MshtmlDocumentTest, VisibleTextComesFromTheBody) {
    script.texts[L"body.innertext"] = L"seen";
    const auto document = MshtmlDocument::Create();
    ASSERT_TRUE(document);

    EXPECT_EQ(document->VisibleText(L"<b>seen</b>"), L"seen");

    EXPECT_EQ(script.calls,
              (std::vector<std::wstring>{L"body.innerhtml = [<b>seen</b>]", L"body.innertext"}));
}

TEST_F(MshtmlDocumentTest, NoTextAtAllIsAnEmptyText) {
    for (const VARTYPE type : {VT_NULL, VT_EMPTY, VT_BSTR}) {
        script.nothings[L"body.innertext"] = type;
        const auto document = MshtmlDocument::Create();
        ASSERT_TRUE(document);
        EXPECT_EQ(document->VisibleText(L"<br>"), L"") << type;
    }
}

TEST_F(MshtmlDocumentTest, ADocumentWithoutABodyIsATypeMismatch) {
    for (const VARTYPE type : {VT_DISPATCH, VT_NULL, VT_EMPTY}) {
        script.nothings[L"body"] = type;
        const auto document = MshtmlDocument::Create();
        ASSERT_TRUE(document);
        EXPECT_EQ(ErrorOf([&] { document->InsertAtStartOfBody(L"a", L"b"); }).number, 13) << type;
        EXPECT_EQ(ErrorOf([&] { static_cast<void>(document->VisibleText(L"a")); }).number, 13)
            << type;
    }
}

TEST_F(MshtmlDocumentTest, FailureOfTheEngineIsRaised) {
    script.failures[L"write"] = E_ACCESSDENIED;
    const auto document = MshtmlDocument::Create();
    ASSERT_TRUE(document);

    EXPECT_EQ(ErrorOf([&] { document->InsertAtStartOfBody(L"a", L"b"); }).number, 70);

    EXPECT_EQ(script.calls, (std::vector<std::wstring>{L"open [about:blank]"}));
}

TEST_F(MshtmlDocumentTest, EngineIsPreferredWhereItIs) {
    const auto document = NewHtmlDocument();
    EXPECT_NE(dynamic_cast<MshtmlDocument*>(document.get()), nullptr);
}

TEST(MshtmlDocumentAloneTest, WithoutTheEngineTheBuiltInDocumentServes) {
    const ComApartment apartment;
    // The Wine of the tests runs without a browser engine.
    ASSERT_FALSE(MshtmlDocument::Create());

    const auto document = NewHtmlDocument();

    ASSERT_NE(dynamic_cast<BuiltInHtmlDocument*>(document.get()), nullptr);
    document->InsertAtStartOfBody(L"<html><body>old</body></html>", L"new ");
    EXPECT_EQ(document->Serialise(), L"<html><body>new old</body></html>");
}

}  // namespace
}  // namespace corvane::test
