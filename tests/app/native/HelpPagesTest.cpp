#include <algorithm>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <map>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "HelpContext.h"
#include "HelpTopics.h"

namespace {

namespace fs = std::filesystem;

const fs::path kSources = SOURCE_FOLDER;
const fs::path kHelp = kSources / "help";

std::string ReadText(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    EXPECT_TRUE(file) << path;
    std::stringstream text;
    text << file.rdbuf();
    return text.str();
}

/// What the first group of `pattern` finds, in order.
std::vector<std::string> FindAll(const std::string& text, const char* pattern) {
    const std::regex regex(pattern);
    std::vector<std::string> found;
    for (std::sregex_iterator match(text.begin(), text.end(), regex), end; match != end; ++match)
        found.push_back((*match)[1]);
    return found;
}

/// The first word of each line that is no remark.
std::vector<std::string> Entries(const char* list) {
    return FindAll("\n" + ReadText(kHelp / list), "\\n *([^ #\\n][^ \\n]*)");
}

const std::map<std::string, std::string>& Pages() {
    static const auto pages = [] {
        std::map<std::string, std::string> read;
        for (const auto& entry : fs::directory_iterator(kHelp)) {
            if (entry.path().extension() == ".htm")
                read[entry.path().filename().string()] = ReadText(entry.path());
        }
        return read;
    }();
    return pages;
}

std::string Utf8(std::wstring_view name) { return {name.begin(), name.end()}; }

/// Whether "page.htm", "page.htm#place" or, on `page` itself, "#place" is there.
bool Resolves(const std::string& page, const std::string& link) {
    const auto hash = link.find('#');
    const std::string target = hash == 0 ? page : link.substr(0, hash);
    if (!Pages().contains(target)) return false;
    return hash == std::string::npos ||
           Pages().at(target).find("id=\"" + link.substr(hash + 1) + "\"") != std::string::npos;
}

/// The first tag that does not match; empty when each tag is closed, innermost first.
std::string FirstOpenTag(const std::string& text) {
    std::vector<std::string> open;
    for (const std::string& tag : FindAll(text, "<([^!>][^>]*)>")) {
        const std::string name = tag.substr(0, tag.find_first_of(" \n"));
        if (tag.ends_with('/')) continue;
        if (name.front() != '/') {
            open.push_back(name);
        } else if (open.empty() || open.back() != name.substr(1)) {
            return tag;
        } else {
            open.pop_back();
        }
    }
    return open.empty() ? std::string() : open.back();
}

TEST(HelpPages, TheContentsListEachPageOnce) {
    const auto listed = Entries("contents.txt");
    EXPECT_EQ(std::set<std::string>(listed.begin(), listed.end()).size(), listed.size());
    EXPECT_EQ(listed.size(), Pages().size());
    for (const std::string& page : listed) EXPECT_TRUE(Pages().contains(page)) << page;
}

TEST(HelpPages, PagesAreWellFormed) {
    std::set<std::string> titles;
    for (const auto& [name, text] : Pages()) {
        EXPECT_EQ(FirstOpenTag(text), "") << name;
        EXPECT_TRUE(std::ranges::all_of(text, [](char c) { return c > 0; }))
            << name << ": the viewer's contents and index know no encoding";
        const auto title = FindAll(text, "<title>([^<]+)</title>");
        ASSERT_EQ(title.size(), 1U) << name;
        EXPECT_TRUE(titles.insert(title.front()).second) << name << " has the title of another page";
        EXPECT_EQ(FindAll(text, "<h1>([^<]+)</h1>"), title) << name;
        const auto ids = FindAll(text, " id=\"([^\"]+)\"");
        EXPECT_EQ(std::set<std::string>(ids.begin(), ids.end()).size(), ids.size()) << name;
    }
}

TEST(HelpPages, LinksAndPicturesResolve) {
    const auto pictures = Entries("pictures.txt");
    for (const auto& [name, text] : Pages()) {
        for (const std::string& link : FindAll(text, "<a href=\"([^\"]*)\"")) {
            EXPECT_TRUE(Resolves(name, link)) << name << ": " << link;
        }
        for (const std::string& picture : FindAll(text, "<img src=\"([^\"]*)\" alt=\"[^\"]+\"")) {
            EXPECT_TRUE(std::ranges::count(pictures, picture)) << name << ": " << picture;
        }
        EXPECT_EQ(FindAll(text, "(<img )").size(),
                  FindAll(text, "<img src=\"([^\"]*)\" alt=\"[^\"]+\"").size())
            << name << ": a picture without a description";
    }
    for (const std::string& origin : FindAll(ReadText(kHelp / "pictures.txt"), "\\n[^# ]+ +([^ ]+)")) {
        EXPECT_TRUE(fs::exists(kSources / "docs" / origin)) << origin;
    }
}

TEST(HelpPages, IndexWordsAreUniqueAndLeadToAPlace) {
    std::set<std::string> words;
    for (const auto& [name, text] : Pages()) {
        const auto lists = FindAll(text, "<meta name=\"keywords\" content=\"([^\"]+)\" />");
        ASSERT_EQ(lists.size(), 1U) << name;
        for (const std::string& entry : FindAll(lists.front(), " *([^;]+)")) {
            const auto hash = entry.find('#');
            EXPECT_TRUE(words.insert(entry.substr(0, hash)).second) << name << ": " << entry;
            if (hash != std::string::npos) {
                EXPECT_TRUE(Resolves(name, entry.substr(hash))) << name << ": " << entry;
            }
        }
    }
}

TEST(HelpPages, EveryDialogHasAPage) {
    const std::string ids = ReadText(kSources / "res/resource.h");
    for (const std::string& dialog : FindAll(ReadText(kSources / "res/Dialogs.inc"), "(IDD_\\w+) DIALOGEX")) {
        const auto number = FindAll(ids, ("#define " + dialog + " (\\d+)").c_str());
        ASSERT_EQ(number.size(), 1U) << dialog;
        EXPECT_TRUE(HelpPageOf(HelpOfDialog(static_cast<unsigned>(std::stoul(number.front()))))) << dialog;
    }
}

TEST(HelpPages, EveryControlOfTheMainDialogHasAPage) {
    const std::string dialogs = ReadText(kSources / "res/Dialogs.inc");
    const std::string ids = ReadText(kSources / "res/resource.h");
    const auto begin = dialogs.find("IDD_PLUGIN_MANAGER DIALOGEX");
    ASSERT_NE(begin, std::string::npos);
    const std::string main = dialogs.substr(begin, dialogs.find("\nEND", begin) - begin);
    const auto controls = FindAll(
        main,
        "(?:LISTBOX|COMBOBOX|(?:EDITTEXT|PUSHBUTTON|AUTO\\w+) (?:T_\\w+, )?|CONTROL \"\",) *(IDC_\\w+)");
    EXPECT_GT(controls.size(), 30U);
    for (const std::string& control : controls) {
        // These two are about the whole window.
        if (control == "IDC_HELP_BUTTON" || control == "IDC_CLOSE") continue;
        const auto number = FindAll(ids, ("#define " + control + " (\\d+)").c_str());
        ASSERT_EQ(number.size(), 1U) << control;
        EXPECT_TRUE(HelpPageOf(HelpOfControl(static_cast<unsigned>(std::stoul(number.front()))))) << control;
    }
}

TEST(HelpPages, ThePagesThatTheProgramOpensAreThere) {
    for (const auto& topics : {DialogTopics(), ControlTopics()}) {
        for (const HelpTopic& topic : topics) {
            EXPECT_TRUE(Pages().contains(Utf8(topic.page))) << topic.id;
        }
    }
    EXPECT_TRUE(Pages().contains(Utf8(HelpPageOf(130).value_or(L""))));
}

}  // namespace
