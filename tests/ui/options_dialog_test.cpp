// The options dialog of the module, opened by the host's command and worked by a user.
#include <cstdlib>
#include <iterator>
#include <map>
#include <set>
#include <sstream>

#include "resources/dialogs.h"
#include "tests/module/session.h"
#include "tests/ui/user.h"

using namespace host_kit;
using test::closeBox;
using test::escape;
using test::SeenDialog;

namespace {

/// The lines of an INI text in any order; the one key outside its first section is no other's.
std::set<std::string> Lines(const std::string& text) {
    std::istringstream words(text);  // none has a blank
    return {std::istream_iterator<std::string>(words), {}};
}

std::set<std::string> FactoryDefaults(const std::string& group) {
    return Lines(
        "[defaults] ColorThreshold=10 Softness=70 Bias=0 ColorkeyEnable=0 KeycolorR=255 "
        "KeycolorG=255 KeycolorB=255 ColorkeyThreshold=0 ColorkeyInvert=0 [ui] ColorkeyGroup=" +
        group);
}

constexpr char otherDefaults[] = "[defaults]\nSoftness=33\nKeycolorG=7\n[ui]\nColorkeyGroup=0\n";

/// A module with one instance in a host that has a user before it.
class Desk {
  public:
    explicit Desk(const std::string& ini = {}, const HostIdentity& identity = {})
        : session(ini, identity) {
        session.host.identity.mainWindow = user.mainWindow();
    }

    /// Opens the dialog and works it with `actions`; nothing when none opened.
    std::optional<SeenDialog> work(std::vector<int> actions) {
        return user.work(std::move(actions), [this] {
            const CommandResult result = instance.doDialog();
            EXPECT_EQ(result.error, PF_Err_NONE);
            EXPECT_EQ(result.out.out_flags, 0);
        });
    }

    [[nodiscard]] std::string ini() const { return ReadText(iniPath()); }
    [[nodiscard]] std::string iniPath() const { return session.folder.file("nevrel.ini"); }

    test::User user;
    Session session;
    Instance instance{session.effect};
};

TEST(OptionsDialog, LeavesTheFileAloneWhenNothingChanges) {
    for (const std::string& ini : {std::string(), std::string("; mine\n") + otherDefaults}) {
        Desk desk(ini);
        for (const int end : {OK_BUTTON_ID, escape, closeBox}) EXPECT_TRUE(desk.work({end}));
        EXPECT_TRUE(desk.work({GROUP_CHECKBOX_ID, GROUP_CHECKBOX_ID, SETTINGS_BOX_ID, escape}));
        EXPECT_EQ(desk.ini(), ini);
        EXPECT_EQ(std::filesystem::exists(desk.iniPath()), !ini.empty());
    }
}

TEST(OptionsDialog, RestoringFactoryDefaultsWritesOnlyADifference) {
    Desk factory;
    EXPECT_TRUE(factory.work({STORE_BUTTON_ID, RESTORE_BUTTON_ID, OK_BUTTON_ID}));
    EXPECT_FALSE(std::filesystem::exists(factory.iniPath()));

    Desk other(otherDefaults);
    EXPECT_TRUE(other.work({RESTORE_BUTTON_ID, OK_BUTTON_ID}));
    EXPECT_EQ(Lines(other.ini()), FactoryDefaults("0"));
}

TEST(OptionsDialog, StoresTheInstancesValuesForTheNextStartUp) {
    Desk desk;
    SetControls(desk.instance, {42, 5, 6, 1, 1, 2, 3, 4, 1});
    EXPECT_TRUE(desk.work({STORE_BUTTON_ID, escape}));
    EXPECT_EQ(Lines(desk.ini()),
              Lines("[defaults] ColorThreshold=42 Softness=5 Bias=6 ColorkeyEnable=1 KeycolorR=1 "
                    "KeycolorG=2 KeycolorB=3 ColorkeyThreshold=4 ColorkeyInvert=1 [ui] "
                    "ColorkeyGroup=1"));
    EXPECT_EQ(desk.instance.param(idThreshold).u.sd.value, 42) << "the instance keeps its own";

    const Session next(desk.ini());
    EXPECT_EQ(Instance(next.effect).param(idThreshold).u.sd.dephault, 42);
}

TEST(OptionsDialog, TheCheckboxChoosesTheLayout) {
    Desk desk;
    EXPECT_TRUE(desk.work({GROUP_CHECKBOX_ID, closeBox})->controls.at(GROUP_CHECKBOX_ID).checked);
    EXPECT_EQ(Lines(desk.ini()), FactoryDefaults("0"));

    EXPECT_FALSE(
        desk.work({GROUP_CHECKBOX_ID, OK_BUTTON_ID})->controls.at(GROUP_CHECKBOX_ID).checked);
    EXPECT_EQ(Lines(desk.ini()), FactoryDefaults("1"));
}

TEST(OptionsDialog, AHostThatIgnoresDefaultsGetsTheCheckboxOnly) {
    Desk desk(otherDefaults, HostNamed(PF_AppID_AfterEffects, {12, 11}));
    const auto seen =
        desk.work({STORE_BUTTON_ID, RESTORE_BUTTON_ID, GROUP_CHECKBOX_ID, OK_BUTTON_ID});
    ASSERT_TRUE(seen);
    EXPECT_FALSE(seen->controls.at(STORE_BUTTON_ID).enabled);
    EXPECT_FALSE(seen->controls.at(RESTORE_BUTTON_ID).enabled);
    EXPECT_TRUE(seen->controls.at(GROUP_CHECKBOX_ID).enabled);
    EXPECT_EQ(Lines(desk.ini()), Lines("[defaults] Softness=33 KeycolorG=7 [ui] ColorkeyGroup=1"));

    for (const HostIdentity& newer :
         {HostNamed(PF_AppID_AfterEffects, {12, 12}), HostNamed(PF_AppID_Premiere, {11, 0})}) {
        const auto enabled = Desk({}, newer).work({escape});
        EXPECT_TRUE(enabled->controls.at(STORE_BUTTON_ID).enabled);
        EXPECT_TRUE(enabled->controls.at(RESTORE_BUTTON_ID).enabled);
    }
}

TEST(OptionsDialog, OpensCentredWithThePageOnTop) {
    Desk desk;
    const auto seen = desk.work({escape});
    ASSERT_TRUE(seen);
    EXPECT_EQ(seen->caption, "option");
    RECT owner{};
    GetWindowRect(desk.user.mainWindow(), &owner);
    const RECT& place = seen->place;
    EXPECT_EQ(place.left, (owner.left + owner.right - (place.right - place.left)) / 2);
    EXPECT_EQ(place.top, (owner.top + owner.bottom - (place.bottom - place.top)) / 2);
    EXPECT_EQ(seen->page.left, seen->client.left);
    EXPECT_EQ(seen->page.top, seen->client.top);
    EXPECT_EQ(seen->page.right, seen->client.right);
    EXPECT_NEAR(seen->page.bottom - seen->page.top,
                (seen->client.bottom - seen->client.top) * 94.0 / 273, 1)
        << "in the proportion of their dialog units";
}

/// Whoever starts this program says so when its locale and its arguments ask for Japanese.
bool IsJapanese() {
    const char* japanese = std::getenv("NEVREL_TEST_JAPANESE");
    return japanese != nullptr && *japanese == '1';
}

TEST(OptionsDialog, SpeaksTheLanguageOfTheProcess) {
    const auto seen = Desk().work({escape});
    ASSERT_TRUE(seen);
    const std::map<int, std::pair<std::string, std::string>> expected{
        {SETTINGS_BOX_ID,  // 設定 （次回起動から有効になります）
         {"Settings (Valid from next start-up)",
          "\x90\xDD\x92\xE8\x20\x81\x69\x8E\x9F\x89\xF1\x8B\x4E\x93\xAE\x82\xA9\x82\xE7"
          "\x97\x4C\x8C\xF8\x82\xC9\x82\xC8\x82\xE8\x82\xDC\x82\xB7\x81\x6A"}},
        {GROUP_CHECKBOX_ID,  // カラーキー関連のパラメータを階層化する
         {"Group color key parameters",
          "\x83\x4A\x83\x89\x81\x5B\x83\x4C\x81\x5B\x8A\xD6\x98\x41\x82\xCC\x83\x70\x83"
          "\x89\x83\x81\x81\x5B\x83\x5E\x82\xF0\x8A\x4B\x91\x77\x89\xBB\x82\xB7\x82\xE9"}},
        {STORE_BUTTON_ID,  // 現在のパラメータ設定をデフォルト値として記憶する
         {"Set current parameter values to default",
          "\x8C\xBB\x8D\xDD\x82\xCC\x83\x70\x83\x89\x83\x81\x81\x5B\x83\x5E\x90\xDD\x92"
          "\xE8\x82\xF0\x83\x66\x83\x74\x83\x48\x83\x8B\x83\x67\x92\x6C\x82\xC6\x82\xB5"
          "\x82\xC4\x8B\x4C\x89\xAF\x82\xB7\x82\xE9"}},
        {RESTORE_BUTTON_ID,  // パラメータのデフォルト値設定を初期状態に復帰する
         {"Restore initial default parameter values",
          "\x83\x70\x83\x89\x83\x81\x81\x5B\x83\x5E\x82\xCC\x83\x66\x83\x74\x83\x48\x83"
          "\x8B\x83\x67\x92\x6C\x90\xDD\x92\xE8\x82\xF0\x8F\x89\x8A\xFA\x8F\xF3\x91\xD4"
          "\x82\xC9\x95\x9C\x8B\x41\x82\xB7\x82\xE9"}},
        {OK_BUTTON_ID, {"OK", "OK"}},
    };
    for (const auto& [id, texts] : expected)
        EXPECT_EQ(seen->controls.at(id).text, IsJapanese() ? texts.second : texts.first);
}

/// A folder whose name no code page of one script can hold: the host tells it with question marks.
TEST(OptionsDialog, OpensAndStoresWhereTheHostsPathLeadsNowhere) {
    for (const bool tells : {true, false}) {
        Desk desk;
        const std::filesystem::path folder = desk.session.folder.path() / u"\u30D7\u0119\u05D0";
        std::filesystem::create_directory(folder);
        std::filesystem::copy_file(ModuleFile(), folder / MODULE_FILE);
        const Module module(folder / MODULE_FILE);
        desk.session.host.identity.pluginPath = desk.session.folder.file("???") + "/" MODULE_FILE;
        Effect effect(desk.session.host, module.entryPoint());
        ASSERT_TRUE(effect.paramsSetup().ok());
        Instance instance(effect);
        instance.setSlider(idThreshold, 42);
        if (!tells) {
            desk.session.host.calls.inject(
                {.call = HostCall::GetPlatformData, .nth = 2, .fromThereOn = true});
        }
        EXPECT_TRUE(desk.user.work({STORE_BUTTON_ID, escape}, [&] { instance.doDialog(); }));
        desk.session.host.calls.clearFault();
        EXPECT_TRUE(std::filesystem::exists(folder / "nevrel.ini"));
        EXPECT_TRUE(effect.paramsSetup().ok());
        EXPECT_EQ(Instance(effect).param(idThreshold).u.sd.dephault, 42);
    }
}

}  // namespace
