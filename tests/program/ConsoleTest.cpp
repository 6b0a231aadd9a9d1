// The console companion with the sample studio, as scripts run it.
#include <cstring>

#include "resource.h"
#include "support/FileSandbox.h"
#include "support/RegistrySandbox.h"
#include "support/StandInHost.h"
#include "support/WindowDriver.h"

namespace {

using namespace support;

constexpr wchar_t kPresets[] = L"Software\\Corvane Music Software\\ActiveMovie\\Presets\\";
constexpr wchar_t kReverb[] = L"{486D4B72-5653-5400-8A01-5A3C1E90B764}";
constexpr wchar_t kPermanent[] = L"{6A08CF80-0E18-11CF-A24D-0020AFD79767}";

class Console : public ProgramTest {
  protected:
    void Begin() override {
        DeleteTree(HKEY_CURRENT_USER, kExclusions + (L"\\" + std::wstring(kReverb)));
        m_files.Write(L"in.txt", "");
        std::filesystem::current_path(m_files.Folder());
        ::SetEnvironmentVariableW(L"PATH", BesideTest(L"").c_str());
    }
    void TearDown() override {
        std::filesystem::current_path(m_files.Folder().parent_path());
        // The console of a program that the companion has started may hold them a moment longer.
        EXPECT_TRUE(WaitFor([&] {
            std::error_code held;
            std::filesystem::remove_all(m_files.Folder(), held);
            return !held;
        }));
    }

    /// The exit code of the companion.
    static int Run(const std::wstring& arguments) {
        return ::_wsystem((L"PluginManagerCmd " + arguments + L" <in.txt >out.txt 2>err.txt").c_str());
    }
    /// What the last run has written.
    std::string Out() const { return m_files.Read(L"out.txt"); }
    std::string Err() const { return m_files.Read(L"err.txt"); }

    struct Row {
        std::wstring arguments;
        int exit;
        const char* out;  // what the output begins with
        const char* err;  // a part of the messages
    };
    void ExpectAll(std::initializer_list<Row> rows) const {
        for (const Row& row : rows) {
            SCOPED_TRACE(Utf8(row.arguments));
            EXPECT_EQ(Run(row.arguments), row.exit) << Err();
            // Nothing begins with nothing.
            EXPECT_EQ(Out().substr(0, *row.out ? std::strlen(row.out) : std::string::npos), row.out);
            EXPECT_NE(Err().find(row.err), std::string::npos) << Err();
        }
    }

    const FileSandbox m_files;
};

TEST_F(Console, EndsWithACodeThatTellsHowItWent) {
    m_files.Write(L"ids.txt", "\xEF\xBB\xBF# mine\r\n" + Utf8(kReverb) + "\r\n");
    m_files.Write(L"wide.txt", std::string("\xFF\xFE\x78\0\n\0", 6));
    m_files.Write(L"bad.txt", "\xC3\x28");
    m_files.Write(L"bad.pgl", "<PluginMenuLayout/>");
    m_files.Write(L"bad.spp", "PS");
    m_files.Write(L"bad.pgset", "<!DOCTYPE a><StudioSet Schema='1'/>");
    m_files.Write(L"new.pgset", "<StudioSet Schema='9'/>");
    m_files.Write(L"gone.pgl",
                  "<PluginMenuLayout DocSchema='1'><Folder><Plugin Category='1' Name='Lost One' "
                  "CLSID='{11111111-2222-3333-4444-555555555555}'/></Folder></PluginMenuLayout>");
    const std::wstring id = kReverb;
    const std::wstring unknown = L"11111111-2222-3333-4444-555555555555";
    ExpectAll({
        {L"--help", 0, "Usage:\r\n", ""},
        {L"", 2, "", "a command is missing"},
        {L"list --format xml", 2, "", "Try: PluginManagerCmd list --help"},
        {L"list --category qtz --format csv --match \"NOTE  echo\"", 0,
         "category,name,vendor,clsid,md5,vstId,file,excluded,permanent,missing,duplicateOf\r\nqtz,Note "
         "Echo,,",
         ""},
        {L"list --vst-key \"Software\\None\" --category vst --format json", 0, "[]\r\n", ""},
        {L"exclude --dry-run " + id, 0, "", "Nothing is changed"},
        {L"exclude " + id, 0, "", "Excluded: Kammer Reverb"},
        {L"exclude --from ids.txt", 0, "", "nothing to do"},
        {L"enable --from wide.txt", 3, "", "wide.txt, line 1: no class id: x"},
        {L"enable --from bad.txt", 3, "", "bad.txt: damaged"},
        {L"enable --from none.txt", 3, "", "none.txt: "},
        {L"enable " + unknown + L" " + id, 1, "", "Enabled: Kammer Reverb"},
        {L"enable " + id, 0, "", "Enabled already"},
        {L"exclude " + std::wstring(kPermanent), 1, "", "always excluded"},
        {L"exclude {43765361-5154-5A00-8A01-5A3C1E90B764}", 1, "", "plug-ins of this category"},
        {L"verify \"" + BesideTest(L"x").wstring() + L"\"", 3, "unreadable\t", ""},
        {L"verify gone.pgl bad.pgl", 3, "findings\tgone.pgl\r\nunreadable\tbad.pgl\r\n", "Lost One"},
        {L"verify gone.pgl", 1, "findings\tgone.pgl\r\n", ""},
        {L"verify bad.spp", 3, "unreadable\t", "damaged"},
        {L"presets export a.spp " + unknown, 1, "", "no presets"},
        {L"presets import none.spp", 3, "", "none.spp: "},
        {L"presets import bad.spp", 3, "", "bad.spp: damaged"},
        {L"set load none.pgset", 3, "", "none.pgset: "},
        {L"set load bad.pgset", 3, "", "damaged"},
        {L"set load new.pgset", 3, "", "newer"},
        {L"presets export none\\a.spp", 3, "", "a.spp: "},
    });
}

TEST_F(Console, TakesStudioAndPresetsAwayAndBringsThemBackOnce) {
    const std::wstring presets = kPresets + std::wstring(kReverb);
    DeleteTree(HKEY_CURRENT_USER, presets);
    SetRaw(HKEY_CURRENT_USER, presets, L"Small Room", REG_BINARY, {1, 2, 3});
    const std::wstring excluded = kExclusions + std::wstring(L"\\{506D4372-5653-5400-8A01-5A3C1E90B764}");
    SetText(HKEY_CURRENT_USER, excluded, nullptr, L"Crumbler");
    ExpectAll({
        {L"presets export a.spp", 0, "", "Presets exported: "},
        {L"presets import a.spp", 0, "", "nothing to do"},
        {L"set save s.pgset --presets", 0, "", "Saved: "},
        {L"set load s.pgset --same", 0, "", "nothing to do"},
        {L"verify a.spp s.pgset s.spp", 0, "ok\ta.spp\r\nok\ts.pgset\r\nok\ts.spp\r\n", ""},
    });
    DeleteTree(HKEY_CURRENT_USER, presets);
    ExpectAll({{L"presets import a.spp --dry-run", 0, "", "Presets of Kammer Reverb: "}});
    EXPECT_FALSE(Exists(HKEY_CURRENT_USER, presets));
    ExpectAll({{L"presets import a.spp", 0, "", "Presets of Kammer Reverb: "},
               {L"presets export a.spp --dry-run", 0, "", "Presets exported: "}});
    DeleteTree(HKEY_CURRENT_USER, presets);
    DeleteTree(HKEY_CURRENT_USER, excluded);
    ExpectAll({{L"exclude " + std::wstring(kReverb), 0, "", ""},
               {L"set load s.pgset --same --dry-run", 0, "", "Enabled: Kammer Reverb"},
               {L"set load s.pgset --no-presets", 0, "", "Excluded: Crumbler"}});
    EXPECT_TRUE(Exists(HKEY_CURRENT_USER, excluded));
    EXPECT_FALSE(Exists(HKEY_CURRENT_USER, presets));
    ExpectAll({{L"set load s.pgset --same", 0, "", "Presets of Kammer Reverb: "},
               {L"set load s.pgset --same", 0, "", "nothing to do"},
               {L"presets import a.spp", 0, "", "nothing to do"},
               {L"set save s.pgset", 0, "", "Removed, because"}});
}

TEST_F(Console, TellsTheHostWhatHasChangedAndNothingElse) {
    const StandInHost host;
    SetText(HKEY_CURRENT_USER, kManager, L"ParentWindow", host.HandleText());
    // The list as CSV is what excluding reads.
    EXPECT_EQ(Run(L"list --format csv --match \"kammer dll\""), 0);
    m_files.Write(L"in.txt", Out());
    const std::pair<const wchar_t*, std::size_t> kSteps[] = {{L"exclude --from - --dry-run", 0},
                                                             {L"exclude --from -", 1},
                                                             {L"exclude --from -", 1},
                                                             {L"enable --from -", 2}};
    for (const auto& [step, messages] : kSteps) {
        EXPECT_EQ(Run(step), 0) << Err();
        EXPECT_TRUE(WaitFor([&, wanted = messages] { return host.MessageCount(kPluginsChanged) == wanted; }))
            << messages;
    }
    CRegKey::Open(HKEY_CURRENT_USER, kManager, KEY_WRITE)->DeleteValue(L"ParentWindow");
}

TEST_F(Console, EndsQuietlyWhenNobodyReadsOn) {
    EXPECT_EQ(::_pclose(::_wpopen(L"PluginManagerCmd list 2>err.txt", L"rt")), 3);
    EXPECT_EQ(Err(), "");
}

}  // namespace
