// The options dialog of the module, opened by the host's command and worked by a user.
#include <cstdlib>
#include <iterator>
#include <map>
#include <regex>
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

constexpr int ok = OK_BUTTON_ID, box = GROUP_CHECKBOX_ID, store = STORE_BUTTON_ID,
              restore = RESTORE_BUTTON_ID;

/// The words of a text in any order. An INI line is one; the one key outside the first section is
/// no other's.
std::set<std::string> Words(const std::string& text) {
    std::istringstream words(text);
    return {std::istream_iterator<std::string>(words), {}};
}

std::string InLines(const std::string& words) {
    return std::regex_replace(words, std::regex(" "), "\n");
}

const HostIdentity ignoresDefaults{PF_AppID_AfterEffects, {12, 11}};

/// A module with one instance in a host that has a user before it.
class Desk {
  public:
    explicit Desk(const std::string& ini = {}, const HostIdentity& identity = {})
        : session(ini, identity) {
        session.host.identity.mainWindow = user.mainWindow();
    }

    /// Opens the dialog and works it with `actions`; nothing when none opened.
    std::optional<SeenDialog> work(const std::vector<int>& actions) {
        return user.work(actions, [this] {
            const CommandResult result = instance.doDialog();
            EXPECT_EQ(result.error, PF_Err_NONE);
            EXPECT_EQ(result.out.out_flags, 0);
        });
    }

    test::User user;
    Session session;
    Instance instance{session.effect};
};

TEST(OptionsDialog, WritesTheFileOnlyWhenTheDefaultsHaveChanged) {
    const std::string factory =
        "[defaults] ColorThreshold=10 Softness=70 Bias=0 ColorkeyEnable=0 KeycolorR=255 "
        "KeycolorG=255 KeycolorB=255 ColorkeyThreshold=0 ColorkeyInvert=0 [ui] ColorkeyGroup=";
    const std::string instances =
        "[defaults] ColorThreshold=42 Softness=5 Bias=6 ColorkeyEnable=1 KeycolorR=1 KeycolorG=2 "
        "KeycolorB=3 ColorkeyThreshold=4 ColorkeyInvert=1 [ui] ColorkeyGroup=";
    const std::string some = "[defaults] Softness=33 KeycolorG=7 [ui] ColorkeyGroup=";
    const struct {
        std::string before;
        std::vector<int> actions;
        std::string after;
        HostIdentity host{};
    } cases[] = {
        {"", {ok}, ""},
        {"", {escape}, ""},
        {some + "0", {closeBox}, some + "0"},
        {some + "0", {box, box, SETTINGS_BOX_ID, escape}, some + "0"},
        {"", {store, restore, ok}, ""},
        {"", {box, closeBox}, factory + "0"},
        {"[ui] ColorkeyGroup=0", {box, escape}, factory + "1"},
        {some + "0", {restore, ok}, factory + "0"},
        {some + "0", {store, escape}, instances + "0"},
        {some + "0", {store, restore, box, ok}, some + "1", ignoresDefaults},
    };
    for (const auto& c : cases) {
        Desk desk(InLines(c.before), c.host);
        SetControls(desk.instance, {42, 5, 6, 1, 1, 2, 3, 4, 1});
        const auto seen = desk.work(c.actions);
        ASSERT_TRUE(seen);
        EXPECT_EQ(seen->controls.at(box).checked, !c.before.ends_with("ColorkeyGroup=0"));
        const auto again = desk.work({escape});
        ASSERT_TRUE(again);
        EXPECT_EQ(again->controls.at(box).checked, !c.after.ends_with("ColorkeyGroup=0"));
        EXPECT_EQ(Words(ReadText(desk.session.folder.file("nevrel.ini"))), Words(c.after));
        EXPECT_EQ(desk.instance.param(idThreshold).u.sd.value, 42) << "the instance keeps its own";
    }
}

TEST(OptionsDialog, AHostThatIgnoresDefaultsGetsTheCheckboxOnly) {
    for (const auto& [host, buttons] : {std::pair{ignoresDefaults, false},
                                        {HostIdentity{PF_AppID_AfterEffects, {12, 12}}, true},
                                        {HostIdentity{PF_AppID_Premiere, {11, 0}}, true}}) {
        const auto seen = Desk({}, host).work({escape});
        ASSERT_TRUE(seen);
        EXPECT_EQ(seen->controls.at(store).enabled, buttons);
        EXPECT_EQ(seen->controls.at(restore).enabled, buttons);
        EXPECT_TRUE(seen->controls.at(box).enabled);
    }
}

TEST(OptionsDialog, OpensCentredWithThePageOnTop) {
    Desk desk;
    const auto seen = desk.work({escape});
    ASSERT_TRUE(seen);
    EXPECT_EQ(seen->caption, "option");
    const auto& [owner, place] = std::tie(test::mainWindowPlace, seen->place);
    EXPECT_EQ(place.left, (owner.left + owner.right - (place.right - place.left)) / 2);
    EXPECT_EQ(place.top, (owner.top + owner.bottom - (place.bottom - place.top)) / 2);
    EXPECT_EQ(seen->page.left, seen->client.left);
    EXPECT_EQ(seen->page.top, seen->client.top);
    EXPECT_EQ(seen->page.right, seen->client.right);
    EXPECT_NEAR(seen->page.bottom - seen->page.top,
                (seen->client.bottom - seen->client.top) * 94.0 / 273, 1)
        << "in the proportion of their dialog units";
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
    // Whoever starts this program says so when its locale and its arguments ask for Japanese.
    const char* japanese = std::getenv("NEVREL_TEST_JAPANESE");
    for (const auto& [id, texts] : expected) {
        EXPECT_EQ(seen->controls.at(id).text,
                  japanese != nullptr && *japanese == '1' ? texts.second : texts.first);
    }
}

/// For scripts/screenshots.
TEST(OptionsDialog, DISABLED_StaysOpenForSomebodyToLookAt) {
    Desk desk;
    EXPECT_TRUE(desk.instance.doDialog().ok());
}

/// A folder whose name no code page of one script can hold: the host tells another, or one with
/// question marks, or none.
TEST(OptionsDialog, OpensAndStoresWhereTheHostsPathLeadsNowhere) {
    for (const std::string told : {"no such folder/" MODULE_FILE, "nevrel?.aex", ""}) {
        Desk desk;
        const std::filesystem::path folder = desk.session.folder.path() / u"\u30D7\u0119\u05D0";
        std::filesystem::create_directory(folder);
        const Module module(CopyModule(folder));
        desk.session.host.identity.pluginPath = desk.session.folder.file(told);
        Effect effect(desk.session.host, module.entryPoint());
        ASSERT_TRUE(effect.paramsSetup().ok());
        Instance instance(effect);
        instance.setSlider(idThreshold, 42);
        if (told.empty()) {
            desk.session.host.calls.inject(
                {.call = HostCall::GetPlatformData, .nth = 2, .fromThereOn = true});
        }
        EXPECT_TRUE(desk.user.work({store, escape}, [&] { instance.doDialog(); }));
        EXPECT_TRUE(std::filesystem::exists(folder / "nevrel.ini")) << told;
        EXPECT_TRUE(effect.paramsSetup().ok());
        desk.session.host.calls.clearFault();
        EXPECT_EQ(Instance(effect).param(idThreshold).u.sd.dephault, 42) << told;
    }
}

}  // namespace
