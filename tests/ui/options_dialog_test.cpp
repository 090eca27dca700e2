// The options dialog of the module, opened by the host's command and worked by a user.
#include <cstdlib>
#include <map>
#include <sstream>

#include "resources/dialogs.h"
#include "tests/module/session.h"
#include "tests/ui/user.h"

using namespace host_kit;
using test::closeBox;
using test::escape;
using test::SeenDialog;

namespace {

/// The keys of an INI text with their values, each key with its section before it.
using Ini = std::map<std::string, std::string>;

Ini Parse(const std::string& text) {
    Ini values;
    std::string section;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        while (!line.empty() && line.back() == '\r') line.pop_back();
        const std::size_t equals = line.find('=');
        if (line.starts_with('[')) section = line;
        if (equals != std::string::npos)
            values[section + line.substr(0, equals)] = line.substr(equals + 1);
    }
    return values;
}

Ini FactoryDefaults() {
    return Parse(
        "[defaults]\nColorThreshold=10\nSoftness=70\nBias=0\nColorkeyEnable=0\nKeycolorR="
        "255\nKeycolorG=255\n"
        "KeycolorB=255\nColorkeyThreshold=0\nColorkeyInvert=0\n[ui]\nColorkeyGroup=1\n");
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
    const std::vector<std::vector<int>> visits{
        {OK_BUTTON_ID},
        {escape},
        {closeBox},
        {GROUP_CHECKBOX_ID, GROUP_CHECKBOX_ID, SETTINGS_BOX_ID, escape}};
    for (const std::string& ini : {std::string(), std::string("; mine\n") + otherDefaults}) {
        Desk desk(ini);
        for (const std::vector<int>& actions : visits) EXPECT_TRUE(desk.work(actions));
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
    Ini expected = FactoryDefaults();
    expected["[ui]ColorkeyGroup"] = "0";
    EXPECT_EQ(Parse(other.ini()), expected);
}

TEST(OptionsDialog, StoresTheInstancesValuesForTheNextStartUp) {
    Desk desk;
    SetControls(desk.instance, {42, 5, 6, 1, 1, 2, 3, 4, 1});
    EXPECT_TRUE(desk.work({STORE_BUTTON_ID, escape}));
    EXPECT_EQ(Parse(desk.ini()),
              Parse("[defaults]\nColorThreshold=42\nSoftness=5\nBias=6\nColorkeyEnable="
                    "1\nKeycolorR=1\nKeycolorG=2\n"
                    "KeycolorB=3\nColorkeyThreshold=4\nColorkeyInvert=1\n[ui]\nColorkeyGroup=1\n"));
    EXPECT_EQ(desk.instance.param(idThreshold).u.sd.value, 42) << "the instance keeps its own";

    const Session next(desk.ini());
    EXPECT_EQ(Instance(next.effect).param(idThreshold).u.sd.dephault, 42);
}

TEST(OptionsDialog, TheCheckboxChoosesTheLayout) {
    Desk desk;
    EXPECT_TRUE(desk.work({GROUP_CHECKBOX_ID, closeBox})->controls.at(GROUP_CHECKBOX_ID).checked);
    Ini expected = FactoryDefaults();
    expected["[ui]ColorkeyGroup"] = "0";
    EXPECT_EQ(Parse(desk.ini()), expected);

    EXPECT_FALSE(
        desk.work({GROUP_CHECKBOX_ID, OK_BUTTON_ID})->controls.at(GROUP_CHECKBOX_ID).checked);
    EXPECT_EQ(Parse(desk.ini()), FactoryDefaults());
}

TEST(OptionsDialog, AHostThatIgnoresDefaultsGetsTheCheckboxOnly) {
    Desk desk(otherDefaults, HostNamed(PF_AppID_AfterEffects, {12, 11}));
    const auto seen =
        desk.work({STORE_BUTTON_ID, RESTORE_BUTTON_ID, GROUP_CHECKBOX_ID, OK_BUTTON_ID});
    ASSERT_TRUE(seen);
    EXPECT_FALSE(seen->controls.at(STORE_BUTTON_ID).enabled);
    EXPECT_FALSE(seen->controls.at(RESTORE_BUTTON_ID).enabled);
    EXPECT_TRUE(seen->controls.at(GROUP_CHECKBOX_ID).enabled);
    EXPECT_EQ(Parse(desk.ini()),
              Parse("[defaults]\nSoftness=33\nKeycolorG=7\n[ui]\nColorkeyGroup=1\n"));

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

/// Whoever starts this program in a Japanese locale or with the language option says so here.
bool IsJapanese() { return std::getenv("NEVREL_TEST_JAPANESE") != nullptr; }

TEST(OptionsDialog, SpeaksTheLanguageOfTheProcess) {
    const auto seen = Desk().work({escape});
    ASSERT_TRUE(seen);
    const std::map<int, std::pair<std::string, std::string>> beginnings{
        {SETTINGS_BOX_ID, {"Settings (", "\x90\xDD\x92\xE8 \x81\x69"}},
        {GROUP_CHECKBOX_ID, {"Group ", "\x83\x4A\x83\x89\x81\x5B"}},
        {STORE_BUTTON_ID, {"Set current", "\x8C\xBB\x8D\xDD\x82\xCC"}},
        {RESTORE_BUTTON_ID, {"Restore ", "\x83\x70\x83\x89\x83\x81"}},
        {OK_BUTTON_ID, {"OK", "OK"}},
    };
    for (const auto& [id, texts] : beginnings) {
        const std::string& text = seen->controls.at(id).text;
        EXPECT_TRUE(text.starts_with(IsJapanese() ? texts.second : texts.first)) << text;
    }
}

TEST(OptionsDialog, DoesNotOpenInAHostThatLacksWhatItNeeds) {
    Desk desk;
    desk.session.host.calls.inject(
        {.call = HostCall::GetPlatformData, .nth = 2, .fromThereOn = true});
    EXPECT_FALSE(desk.work({})) << "without the module's path";
    desk.session.host.calls.clearFault();
    desk.session.host.identity.pluginPath = desk.session.folder.file("other.aex");
    EXPECT_FALSE(desk.work({})) << "with the path of another module";

    desk.session.host.givesBasicSuite = false;
    desk.session.host.calls.resetCount();
    EXPECT_EQ(desk.instance.doDialog().error, PF_Err_BAD_CALLBACK_PARAM);
    EXPECT_EQ(desk.session.host.calls.count(), 0);
    desk.session.host.givesBasicSuite = true;
    EXPECT_FALSE(std::filesystem::exists(desk.iniPath()));
}

TEST(Module, ServesAnInstanceThroughItsLife) {
    Desk desk;
    Instance& instance = desk.instance;
    Picture input(PF_PixelFormat_ARGB32);
    Picture before(PF_PixelFormat_ARGB32);
    Picture after(PF_PixelFormat_ARGB32);
    std::vector<std::byte> flat;
    EXPECT_TRUE(desk.session.effect.about().ok());
    EXPECT_TRUE(instance.sequenceSetup().ok());
    EXPECT_TRUE(instance.updateParamsUi().ok());
    instance.setSlider(idThreshold, 42);
    EXPECT_TRUE(instance.userChangedParam().ok());
    EXPECT_TRUE(SmartRender(instance, input, before).ok());
    EXPECT_NE(before.pixels(), input.pixels());
    EXPECT_TRUE(instance.sequenceFlatten(flat).ok());
    EXPECT_TRUE(instance.sequenceResetup(flat).ok());
    EXPECT_TRUE(desk.work({GROUP_CHECKBOX_ID, STORE_BUTTON_ID, OK_BUTTON_ID}));
    EXPECT_TRUE(instance.updateParamsUi().ok());
    EXPECT_TRUE(instance.render(input, after).ok());
    EXPECT_EQ(after.pixels(), before.pixels()) << "the dialog changes nothing of the instance";
    EXPECT_TRUE(instance.sequenceSetdown().ok());
}

}  // namespace
