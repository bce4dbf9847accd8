#include "platform/MshtmlDocument.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/kit/ComApartment.h"
#include "platform/kit/ComError.h"
#include "platform/kit/ComObject.h"
#include "support/windows/EmbeddedObject.h"
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
    bool bodyMustBeWritten = false;              // there is none before a text that has one
    IID lacked = IID_NULL;                       // an interface that the document does not have

    // What became of the client site. Its answer is known once the document was told to ask.
    std::optional<long> downloadControl;
    int sitesGiven = 0;
    int sitesTakenBack = 0;
    std::optional<ULONG> siteReferences;  // left after the document let its site go
    int documents = 0;                    // alive
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
template <class... Interfaces>
class EngineObject : public ComObject<IDispatch, Interfaces...> {
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
        EXPECT_TRUE(script_.downloadControl) << "the document does not know yet what is forbidden";
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
            result->pdispVal = MakeComObject<EngineObject<>>(
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
        if (script_.bodyMustBeWritten && call.starts_with(L"write [<body"))
            script_.nothings.erase(L"body");
        if (kind == DISPATCH_PROPERTYGET) {
            result->vt = VT_BSTR;
            result->bstrVal = Bstr(script_.texts.at(name)).release();
        }
        return S_OK;
    }

protected:
    EngineScript& script_;

private:
    // MSHTML's write takes its text as an argument or in an array of arguments.
    static std::wstring TextOf(const VARIANT& argument) {
        EXPECT_EQ(argument.vt, VT_BSTR);
        return {argument.bstrVal, SysStringLen(argument.bstrVal)};
    }

    std::wstring path_;
    std::vector<std::wstring> members_;
};

// The document, which is embedded in the program that made it.
class EngineDocument final
    : public test_support::EmbeddedObject<EngineObject<IOleObject, IOleControl>> {
public:
    explicit EngineDocument(EngineScript& script)
        : EmbeddedObject(script, L"",
                         std::vector<std::wstring>{L"open", L"write", L"close", L"body",
                                                   L"readystate", L"documentelement"}) {
        ++script.documents;
        if (script.bodyMustBeWritten)
            script.nothings[L"body"] = VT_DISPATCH;
    }

    HRESULT STDMETHODCALLTYPE SetClientSite(IOleClientSite* site) override {
        if (!site) {
            ++script_.sitesTakenBack;
            script_.siteReferences = site_.Reset();
            return S_OK;
        }
        if (const HRESULT refusal = RefusalOf(L"setclientsite"); FAILED(refusal))
            return refusal;
        ++script_.sitesGiven;
        site_ = site;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE OnAmbientPropertyChange(DISPID member) override {
        EXPECT_EQ(member, downloadControlProperty);
        if (const HRESULT refusal = RefusalOf(L"onambientpropertychange"); FAILED(refusal))
            return refusal;
        ComPtr<IDispatch> properties;
        EXPECT_EQ(site_.As(&properties), S_OK);
        constexpr DISPID backColour = -501;
        EXPECT_EQ(Property(*properties.Get(), backColour).vt, VT_EMPTY);
        const VARIANT answer = Property(*properties.Get(), downloadControlProperty);
        EXPECT_EQ(answer.vt, VT_I4);
        script_.downloadControl = answer.lVal;
        return S_OK;
    }

private:
    static constexpr DISPID downloadControlProperty = -5512;

    ~EngineDocument() override { --script_.documents; }
    [[nodiscard]] bool Answers(REFIID id) const override {
        return !IsEqualIID(id, script_.lacked) && EmbeddedObject::Answers(id);
    }
    [[nodiscard]] HRESULT RefusalOf(const std::wstring& call) const {
        const auto failure = script_.failures.find(call);
        return failure == script_.failures.end() ? S_OK : failure->second;
    }
    // Empty where the site does not know the property.
    static VARIANT Property(IDispatch& properties, DISPID member) {
        DISPPARAMS none{};
        VARIANT value{};
        properties.Invoke(member, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET, &none,
                          &value, nullptr, nullptr);
        return value;
    }

    ComPtr<IOleClientSite> site_;
};

class EngineFactory final : public ComObject<IClassFactory> {
public:
    explicit EngineFactory(EngineScript& script) : script_(script) {}
    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown*, REFIID id, void** object) override {
        return MakeComObject<EngineDocument>(script_)->QueryInterface(id, object);
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

TEST_F(MshtmlDocumentTest, AnEmptyTextGetsABodyForTheFragment) {
    script.bodyMustBeWritten = true;
    script.texts[L"documentelement.outerhtml"] = L"<HTML>all</HTML>";
    const auto document = MshtmlDocument::Create();
    ASSERT_TRUE(document);

    document->InsertAtStartOfBody(L"", L"new");
    EXPECT_EQ(document->Serialise(), L"<HTML>all</HTML>");

    EXPECT_EQ(script.calls, (std::vector<std::wstring>{
                                L"open [about:blank]", L"write []", L"write [<body></body>]",
                                L"body.insertadjacenthtml [afterBegin] [new]", L"close",
                                L"documentelement.outerhtml"}));
}

TEST_F(MshtmlDocumentTest, ANewDocumentGetsABodyForVisibleText) {
    script.bodyMustBeWritten = true;
    script.texts[L"body.innertext"] = L"seen";
    const auto document = MshtmlDocument::Create();
    ASSERT_TRUE(document);

    EXPECT_EQ(document->VisibleText(L"seen"), L"seen");

    EXPECT_EQ(script.calls,
              (std::vector<std::wstring>{L"open [about:blank]", L"write [<body></body>]", L"close",
                                         L"body.innerhtml = [seen]", L"body.innertext"}));
}

struct ControlFlag {
    const char* name;
    long flag;
    bool set;
};

TEST_F(MshtmlDocumentTest, TheDocumentIsToldToRunAndLoadNothing) {
    ASSERT_TRUE(MshtmlDocument::Create());

    ASSERT_TRUE(script.downloadControl);
    for (const ControlFlag& each :
         {ControlFlag{"pictures", 0x10, false}, ControlFlag{"videos", 0x20, false},
          ControlFlag{"sounds", 0x40, false}, ControlFlag{"no scripts", 0x80, true},
          ControlFlag{"no Java", 0x100, true}, ControlFlag{"no running of controls", 0x200, true},
          ControlFlag{"no loading of controls", 0x400, true},
          ControlFlag{"no loading of frames", 0x1000, true},
          ControlFlag{"no behaviours", 0x8000, true}, ControlFlag{"offline", 0x10000000, true},
          ControlFlag{"no refreshing", 0x20000000, true}, ControlFlag{"silent", 0x40000000, true}})
        EXPECT_EQ((*script.downloadControl & each.flag) != 0, each.set) << each.name;
}

TEST_F(MshtmlDocumentTest, TheSiteGoesWithTheDocument) {
    auto document = MshtmlDocument::Create();
    ASSERT_TRUE(document);
    EXPECT_EQ(script.sitesGiven, 1);
    EXPECT_EQ(script.sitesTakenBack, 0);

    document.reset();

    EXPECT_EQ(script.sitesTakenBack, 1);
    EXPECT_EQ(script.siteReferences, 0U);
    EXPECT_EQ(script.documents, 0);
}

TEST_F(MshtmlDocumentTest, AnEngineThatCannotBeTamedIsNotUsed) {
    const auto expectBuiltIn = [this](const char* how) {
        EXPECT_NE(dynamic_cast<BuiltInHtmlDocument*>(NewHtmlDocument().get()), nullptr) << how;
        EXPECT_EQ(script.calls, std::vector<std::wstring>{}) << how;
        EXPECT_EQ(script.documents, 0) << how;
    };
    script.lacked = __uuidof(IOleObject);
    expectBuiltIn("it takes no site");
    script.lacked = __uuidof(IOleControl);
    expectBuiltIn("it cannot be told to read");
    script.lacked = IID_NULL;
    script.failures[L"setclientsite"] = E_FAIL;
    expectBuiltIn("it refuses the site");
    EXPECT_EQ(script.sitesGiven, 0);
    script.failures.clear();
    script.failures[L"onambientpropertychange"] = E_NOTIMPL;
    expectBuiltIn("it does not read");
    EXPECT_EQ(script.sitesGiven, 1);
    EXPECT_EQ(script.siteReferences, 0U) << "the site is taken back";
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
