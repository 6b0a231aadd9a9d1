#include <gtest/gtest.h>

#include "CmdArguments.h"
#include "CmdHelp.h"

namespace {

using Tokens = std::vector<std::wstring>;

TEST(CmdArguments, TakesEachCommandWithItsOptionsInAnyOrder) {
    const auto parse = [](const Tokens& tokens) {
        auto parsed = ParseCmdArguments(tokens);
        const auto* error = std::get_if<CmdUsageError>(&parsed);
        EXPECT_EQ(error, nullptr) << testing::PrintToString(error->text);
        return error ? CmdArguments{} : std::get<CmdArguments>(parsed);
    };
    const CmdArguments list = parse({L"--vst-key", L"Software\\x", L"list", L"--category=wrapped-vsti",
                                     L"--only", L"missing", L"--format=json", L"--match", L"--a b"});
    EXPECT_EQ(list.verb, CmdVerb::List);
    EXPECT_EQ(list.vstKey, L"Software\\x");
    EXPECT_EQ(list.category, Category::LegacyVstInstruments);
    EXPECT_EQ(list.only, ListOnly::Missing);
    EXPECT_EQ(list.format, ListFormat::Json);
    EXPECT_EQ(list.match, L"--a b");
    EXPECT_EQ(parse({L"exclude", L"--from", L"-", L"--dry-run"}).from, L"-");
    EXPECT_EQ(parse({L"verify", L"--", L"--a.pgl", L"-"}).operands, (Tokens{L"--a.pgl", L"-"}));
    const CmdArguments load = parse({L"set", L"--same", L"load", L"a.pgset", L"--no-presets"});
    EXPECT_EQ(load.verb, CmdVerb::SetLoad);
    EXPECT_TRUE(load.same && load.noPresets && !load.presets && !load.dryRun);
    EXPECT_TRUE(parse({L"list", L"--dry-run", L"--help"}).help) << "whatever is wrong otherwise";
    EXPECT_FALSE(parse({L"--help"}).verb);
    for (const CmdVerb verb : {CmdVerb::List, CmdVerb::Exclude, CmdVerb::Enable, CmdVerb::PresetsExport,
                               CmdVerb::PresetsImport, CmdVerb::SetSave, CmdVerb::SetLoad, CmdVerb::Verify}) {
        const std::wstring usage = L"PluginManagerCmd " + std::wstring(CmdName(verb)) + L' ';
        EXPECT_NE(CmdHelp(verb).find(usage), std::wstring::npos) << testing::PrintToString(usage);
        EXPECT_NE(CmdHelp(std::nullopt).find(usage), std::wstring::npos);
    }
}

TEST(CmdArguments, SaysWhatIsWrong) {
    const std::pair<Tokens, const wchar_t*> kWrong[] = {
        {{}, L"a command is missing"},
        {{L"set"}, L"incomplete command: set"},
        {{L"set", L"x"}, L"unknown command: set x"},
        {{L"LIST"}, L"unknown command: LIST"},
        {{L"list", L"--colour"}, L"unknown option: --colour"},
        {{L"list", L"--category"}, L"--category needs a value"},
        {{L"list", L"--category", L"vst4"}, L"--category knows no \"vst4\""},
        {{L"list", L"--format="}, L"--format knows no \"\""},
        {{L"list", L"--dry-run"}, L"not an option of this command: --dry-run"},
        {{L"--same", L"set", L"save", L"a"}, L"not an option of this command: --same"},
        {{L"list", L"x"}, L"one argument too many: x"},
        {{L"enable"}, L"class ids or --from are missing"},
        {{L"enable", L"x", L"--from", L"-"}, L"either class ids or --from"},
        {{L"presets", L"import"}, L"a file is missing"},
        {{L"exclude", L"--dry-run=no", L"x"}, L"--dry-run takes no value"},
    };
    for (const auto& [tokens, text] : kWrong) {
        const auto parsed = ParseCmdArguments(tokens);
        const auto* error = std::get_if<CmdUsageError>(&parsed);
        ASSERT_NE(error, nullptr) << testing::PrintToString(std::wstring(text));
        EXPECT_EQ(error->text, text);
    }
}

}  // namespace
