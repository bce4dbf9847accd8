// What must not depend on the language, the code page and the zone of whoever uses the program.
// ctest runs this, and tests of lines that hold dates and numbers, in several of them.

#include <algorithm>
#include <cstdlib>
#include <map>

#include "support/windows/Files.h"
#include "support/windows/Folders.h"
#include "WindowTest.h"

namespace end_to_end {
namespace {

constexpr wchar_t formsKey[] = L"Control Panel\\International";

// How the user has numbers and dates written, for a while.
class Forms {
public:
    explicit Forms(const std::map<std::string, std::string>& values) {
        for (const auto& [name, text] : values) {
            former_[name] = RegistryText(HKEY_CURRENT_USER, formsKey, name).value_or("");
            SetRegistryText(HKEY_CURRENT_USER, formsKey, name, text);
        }
    }
    Forms(const Forms&) = delete;
    Forms& operator=(const Forms&) = delete;
    ~Forms() {
        for (const auto& [name, text] : former_)
            SetRegistryText(HKEY_CURRENT_USER, formsKey, name, text);
    }

private:
    std::map<std::string, std::string> former_;
};

// Names that a code page has and the others lack, as long as a user's of GoldMine may be. The
// Japanese one holds characters whose second byte is that of a backslash.
const std::map<UINT, std::string> names = {
    {932, "山田ソ表"}, {1251, "Анна Жук"}, {1252, "Zoë Ørum"}, {1254, "Işıl Şen"}};

class LocaleTest : public WindowTest {
protected:
    // Saves what a settings run has loaded.
    void SaveByHand() {
        ProgramRun run = Start("");
        const HWND window = Show(run);
        Click(window, "cmdSaveSettings");
        PostMessageW(window, WM_CLOSE, 0, 0);
        run.Finish();
        EXPECT_EQ(run.boxes(), Boxes{});
    }
    // The program counts its runs.
    static std::map<std::string, std::string> Options() {
        std::map<std::string, std::string> values = OwnValues();
        values.erase("PreviousStatus");
        return values;
    }
};

TEST_F(LocaleTest, TheTestsRunWhereTheyAreToldTo) {
    const char* told = std::getenv("CORVANE_LOCALE");
    std::string language = told ? told : "en_US";
    language = language.substr(0, language.find('.'));
    std::replace(language.begin(), language.end(), '_', '-');
    wchar_t name[LOCALE_NAME_MAX_LENGTH] = {};
    GetUserDefaultLocaleName(name, LOCALE_NAME_MAX_LENGTH);
    EXPECT_EQ(Utf8(name), language);
}

TEST_F(LocaleTest, SettingsAreReadWhereNumbersAreWrittenInAnotherWay) {
    CloseGoldMine();
    SetAll({{"chkCreateHistory", "0"},
            {"optPhone1Only", "True"},
            {"optPhone123", "False"},
            {"txtCOMDurationSeconds", "1000"},
            {"txtRecordingFileMaxAgeSeconds", "100000"},
            {"txtCallerIDFormat", "###.###,####"}});
    SaveByHand();
    const std::map<std::string, std::string> saved = Options();
    EXPECT_EQ(saved.at("chkCreateHistory"), "0");
    EXPECT_EQ(saved.at("optPhone1Only"), "True");
    EXPECT_EQ(saved.at("txtRecordingFileMaxAgeSeconds"), "100000");

    const bool point = RegistryText(HKEY_CURRENT_USER, formsKey, "sDecimal") == ".";
    const Forms others({{"sDecimal", point ? "," : "."},
                        {"sThousand", point ? "." : ","},
                        {"sShortDate", point ? "dd.MM.yyyy" : "M/d/yyyy"}});
    SaveByHand();

    const std::string log = LogText();
    const std::string date = log.substr(log.find("- ") + 2, 6);
    EXPECT_NE(date.find(point ? "." : "/"), std::string::npos)
        << "the second run reads these forms: " << date;
    EXPECT_EQ(Options(), saved);
}

TEST_F(LocaleTest, NamesOfTheCodePageSurvive) {
    ASSERT_TRUE(names.contains(GetACP())) << "no name for code page " << GetACP();
    const std::string& name = names.at(GetACP());
    const std::wstring folder = recordingsFolder + Wide(name);
    MakeFolder(folder + L"\\");
    const std::string recording = Utf8(folder) + "\\" + name + " (7).wav";
    WriteFileText(Wide(recording), "sound");
    CopyFileTo(std::wstring(dataFolder) + L"MASTER.INI", dataFolder + Wide(name) + L".INI");
    PracticeGoldMine& goldMine = GoldMine("\"/User:" + name + "\"");
    GoldMineIsSpoilt();
    Set("txtLinkedItemPath", Utf8(folder));
    SaveByHand();
    EXPECT_EQ(OwnValue("txtLinkedItemPath"), Utf8(folder));
    SetAll({{"chkPopOnInboundCall", "0"},
            {"optProcessConnect", "False"},
            {"optProcessEnd", "True"},
            {"chkAutoOpenHistory", "0"},
            {"chkCreateLink", "1"},
            {"chkDelayAddingLink", "0"}});

    const Outcome run = Run("/N:E /C:5551234567 /T:I /I:7");

    EXPECT_EQ(
        std::count(run.log.begin(), run.log.end(), "[7]: Prepared link to \"" + recording + "\"."),
        1)
        << testing::PrintToString(run.log);
    EXPECT_EQ(run.boxes, Boxes{});
    EXPECT_EQ(goldMine.NewestHistory("UserID, Notes"), name + "\t" + recording);
}

}  // namespace
}  // namespace end_to_end
