#include "check/calls/CallPage.h"

#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <set>
#include <string_view>

#include "CallLogFixture.h"

namespace corvane {
namespace {

const LogTime made = *LogTimeFromStamp("20240311.180000.000");

// A log with every outcome, a slow command, a box, doubt, and hostile texts.
std::string Everything() {
    const auto run = [](const std::string& number, const std::string& parameters,
                        const std::vector<std::string>& messages) {
        std::vector<std::string> lines = {number +
                                          " 01.000 [] Corvane 1.0.0.1 started with "
                                          "param(s): " +
                                          parameters + "."};
        for (const std::string& message : messages)
            lines.push_back(number + " 05.000 [] " + message);
        lines.push_back(number + " 09.000 [] Finished unloading form and closing program.");
        return LogOf(lines);
    };
    const std::string search = popPhase + "searching while incoming call is ringing.";
    return run("1", "/N:S /C:1 /T:I", {search, "Found 1 in Phone1 of the current record."}) +
           run("2", "/N:E /C:2 /T:I", {"Found 2 in Phone1 of the current record."}) +
           run("3", "/N:S /C:3 /T:I", {search, "Did not find GoldMine contact for 3. "}) +
           run("4", "5551234", {"Dialed 5551234 using 3CX."}) +
           run("5", "/N:S /C:5 /T:I", {"Ignored short CallerID: 5."}) +
           run("6", "/N:S /C:<script>alert(1)</script>&\" /T:I",
               {"> COM command > 1 second(s) (2.000 seconds): '<GMAPI call=\"<b>\"/>'",
                "Could not retrieve UserName", "Run-time error '13':  <img src=x>"}) +
           LogOf({"7 03.401 [x\"><i>] Found 7 in a primary contact record."});
}

std::string Page(const std::string& log, std::size_t last = 100) {
    return CallPage(ReadLog(log, {}, last), L"C:\\<logs>\\a.log", L"", made);
}

std::size_t Count(const std::string& text, const std::string& what) {
    std::size_t count = 0;
    for (auto at = text.find(what); at != std::string::npos; at = text.find(what, at + 1))
        ++count;
    return count;
}

// The first tag that is closed where it should not be, or that stays open.
std::string WrongTag(std::string_view page) {
    const std::set<std::string_view> empty = {"meta", "!DOCTYPE"};
    std::vector<std::string_view> open;
    for (auto at = page.find('<'); at != std::string_view::npos; at = page.find('<', at + 1)) {
        const std::string_view tag = page.substr(at + 1, page.find('>', at) - at - 1);
        const std::string_view name = tag.substr(0, tag.find_first_of(" /", 1));
        if (tag.starts_with('/')) {
            if (open.empty() || open.back() != tag.substr(1))
                return std::string(tag);
            open.pop_back();
        } else if (!empty.contains(name) && !tag.ends_with('/')) {
            open.push_back(name);
        }
    }
    return open.empty() ? "" : std::string(open.back());
}

TEST(CallPage, EveryTagIsClosedInItsPlace) {
    EXPECT_EQ(WrongTag(Page(Everything())), "");
    EXPECT_EQ(WrongTag(Page("")), "");
    EXPECT_EQ(WrongTag("<p><b></p></b>"), "/p") << "the test sees it";
}

TEST(CallPage, NothingRunsInItAndNothingIsFetched) {
    const std::string page = Page(Everything());
    for (const char* acting : {"<script", "<img", "<b>\"", "<i>", "href", " src=\"", "url(h",
                               "@import", "http://", "https://", "onload", "javascript"}) {
        EXPECT_EQ(page.find(acting), std::string::npos) << acting;
    }
    EXPECT_NE(page.find("&lt;script&gt;alert(1)&lt;/script&gt;&amp;"), std::string::npos);
    EXPECT_NE(page.find("default-src 'none'"), std::string::npos);
    EXPECT_TRUE(std::ranges::all_of(page, [](char each) { return each > 0; })) << "ASCII";
}

TEST(CallPage, EveryOutcomeHasASignAndAWordBesideItsColour) {
    const std::string page = Page(Everything());
    for (const char* outcome : {"popped\"><span aria-hidden=\"true\">&#10003;</span><b>popped",
                                "found\"><span aria-hidden=\"true\">&#9675;</span><b>found",
                                "not-found\"><span aria-hidden=\"true\">?</span><b>not found",
                                "dialed\"><span aria-hidden=\"true\">&#8594;</span><b>dialed",
                                "ignored\"><span aria-hidden=\"true\">&#8211;</span><b>ignored",
                                "trouble\"><span aria-hidden=\"true\">!</span><b>trouble"}) {
        EXPECT_NE(page.find(std::string("<td class=\"outcome ") + outcome), std::string::npos)
            << outcome;
    }
}

TEST(CallPage, ColoursArePatternsToo) {
    const std::string page = Page(Everything());
    for (const char* outcome : {"found", "dialed", "ignored", "not-found", "trouble"}) {
        EXPECT_EQ(Count(page, std::string("id=\"pattern-") + outcome + "\""), 1U) << outcome;
        EXPECT_EQ(Count(page, std::string("url(#pattern-") + outcome + ")"), 1U) << outcome;
    }
}

TEST(CallPage, PicturesAndTablesHaveNames) {
    const std::string page = Page(Everything());
    EXPECT_EQ(Count(page, "<svg role=\"img\" aria-labelledby="), 2U);
    for (const char* picture : {"hours", "times"}) {
        EXPECT_EQ(Count(page, std::string("aria-labelledby=\"") + picture + "-title " + picture +
                                  "-desc\""),
                  1U);
        EXPECT_EQ(Count(page, std::string("<title id=\"") + picture + "-title\">"), 1U);
        EXPECT_EQ(Count(page, std::string("<desc id=\"") + picture + "-desc\">"), 1U);
    }
    EXPECT_EQ(Count(page, "<table>"), 3U);
    EXPECT_EQ(Count(page, "<caption>"), 3U);
    EXPECT_EQ(Count(page, "<th "), Count(page, "<th scope="));
    EXPECT_EQ(Count(page, "scope=\"rowgroup\""), 7U) << "one for each call";
    EXPECT_NE(page.find("<html lang=\"en\">"), std::string::npos);
}

TEST(CallPage, RowsTellWhatTheTableTells) {
    const std::string page = Page(Everything());
    EXPECT_NE(page.find("<td class=\"whole\">2024-03-11 14:23:01</td><td>ringing</td>"),
              std::string::npos);
    EXPECT_NE(page.find("popped in Phone1 of the current record</td><td class=\"number\">4.000 s"),
              std::string::npos);
    EXPECT_NE(page.find("Slowest command: &lt;b&gt; 2.000 s"), std::string::npos);
    EXPECT_NE(page.find("Message box: 4.000 s at most"), std::string::npos);
    EXPECT_NE(page.find("Uncertain: its first lines are missing"), std::string::npos);
    EXPECT_NE(page.find("Made 2024-03-11 18:00:00 from C:\\&lt;logs&gt;\\a.log."),
              std::string::npos);
}

TEST(CallPage, TheNewestCallStandsFirstAndTheRestIsCounted) {
    const std::string page = Page(LogOf({"1 01.000 [1] Found 1 in a primary contact record.",
                                         "2 02.000 [2] Found 2 in a primary contact record.",
                                         "3 03.000 [3] Found 3 in a primary contact record."}),
                                  2);
    EXPECT_NE(page.find("The last 2 of 3 calls"), std::string::npos);
    EXPECT_LT(page.find("scope=\"rowgroup\" rowspan=\"1\">3<"),
              page.find("scope=\"rowgroup\" rowspan=\"1\">2<"));
    EXPECT_EQ(page.find("rowspan=\"1\">1<"), std::string::npos);
}

TEST(CallPage, WithoutPopsThereIsNoPictureOfThem) {
    const std::string page = Page(LogOf({"1 01.000 [1] Found 1 in a primary contact record."}));
    EXPECT_EQ(Count(page, "<svg role=\"img\""), 1U);
    EXPECT_EQ(page.find("popped within"), std::string::npos);
}

// A bar is as tall as its count, on an axis that ends on a round number.
TEST(CallPage, BarsHaveTheHeightOfTheirCounts) {
    std::string log;
    for (int number = 1; number <= 30; ++number) {
        const std::string text = std::to_string(number);
        log += LogOf({text + " 01.000 [" + text + "] Found 1 in a primary contact record."});
    }
    const std::string page = Page(log);
    // 30 calls of one hour, and a scale of 0 to 30 in steps of ten.
    EXPECT_NE(page.find(">30</text>"), std::string::npos);
    EXPECT_EQ(page.find(">40</text>"), std::string::npos);
    EXPECT_NE(page.find("<title>14 to 15: 30 found</title><rect class=\"fill\" x=\"433\" y=\"60\" "
                        "width=\"21\" height=\"190\"/>"),
              std::string::npos);
    EXPECT_NE(page.find("Most calls, 30 of 30, began between 14 and 15."), std::string::npos);
}

// Each colour against each ground of its scheme, by the formula that web guidelines use.
double Luminance(const std::string& colour) {
    const auto channel = [&](std::size_t at) {
        const std::string two =
            colour.size() == 4 ? std::string(2, colour[at / 2 + 1]) : colour.substr(at + 1, 2);
        const double value = std::stoi(two, nullptr, 16) / 255.0;
        return value <= 0.03928 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * channel(0) + 0.7152 * channel(2) + 0.0722 * channel(4);
}

double Contrast(const std::string& one, const std::string& other) {
    const double a = Luminance(one);
    const double b = Luminance(other);
    return (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05);
}

TEST(CallPage, ColoursStandOutFromTheirGround) {
    EXPECT_NEAR(Contrast("#fff", "#000000"), 21, 0.01);
    const std::string page = Page("");
    std::map<std::string, std::vector<std::string>> colours;  // of the light, then the dark scheme
    for (auto at = page.find("--"); at != std::string::npos; at = page.find("--", at + 1)) {
        const auto colon = page.find(": #", at);
        const std::string name = page.substr(at + 2, colon - at - 2);
        if (colon != std::string::npos && name.find_first_of(")\n ") == std::string::npos)
            colours[name].push_back(page.substr(colon + 2, page.find(';', colon) - colon - 2));
    }
    EXPECT_EQ(colours.size(), 11U);
    for (std::size_t scheme : {std::size_t{0}, std::size_t{1}}) {
        for (const auto& [name, values] : colours) {
            ASSERT_EQ(values.size(), 2U) << name;
            if (name == "ground" || name == "raised" || name == "line")
                continue;
            const double least = name == "text" || name == "muted" ? 4.5 : 3;
            for (const char* ground : {"ground", "raised"}) {
                EXPECT_GE(Contrast(values[scheme], colours[ground][scheme]), least)
                    << name << " on " << ground << " of scheme " << scheme;
            }
        }
    }
}

}  // namespace
}  // namespace corvane
