// Sequences of commands through the entry point, from a host that may lack anything at any time,
// with control values of any size. LAYOUT is the defaults file: the layout of the controls is fixed
// once a process.
#include <filesystem>
#include <memory>
#include <optional>
#include <vector>

#include "fuzz/fuzz_target.h"
#include "host_kit/frame.h"
#include "module/entry_point.h"
#include "resources/dialogs.h"
#include "tests/temp_folder.h"
#include "windows_stand_in/dialog_shower.h"

using namespace host_kit;

namespace {

constexpr PF_Err kFaultCode = 1234;

PF_PixelFormat ReadFormat(ByteSource& bytes) {
    return bytes.oneOf({PF_PixelFormat_ARGB32, PF_PixelFormat_ARGB64, PF_PixelFormat_ARGB128});
}

/// The user before the host's main window.
struct User : DialogShower {
    explicit User(ByteSource& source) : bytes(source) { window.shower = this; }

    UserAction nextAction(const Window& /*dialog*/) override {
        if (bytes.empty()) return {UserActionKind::CloseBox};
        return {bytes.oneOf({UserActionKind::Click, UserActionKind::Click, UserActionKind::Escape,
                             UserActionKind::CloseBox}),
                bytes.oneOf({OK_BUTTON_ID, GROUP_CHECKBOX_ID, STORE_BUTTON_ID, RESTORE_BUTTON_ID,
                             SETTINGS_BOX_ID})};
    }

    ByteSource& bytes;
    Window window;
};

/// The host application. It lives as long as the process; each input finds it as new.
struct Application {
    Application() {
        // The effect is part of this program; its defaults file is that of the link to it.
        std::filesystem::create_symlink("/proc/self/exe", folder.path() / "nevrel.so");
        host.identity.pluginPath = folder.file("nevrel.so");
        begin();
        Require(effect.globalSetup().ok() && effect.paramsSetup().ok(), "set-up fails");
    }

    void begin() {
        const std::string path = host.identity.pluginPath;
        host.identity = {};
        host.identity.pluginPath = path;
        host.givesBasicSuite = true;
        host.calls.clearFault();
        WriteText(folder.file("nevrel.ini"), LAYOUT);
    }

    TempFolder folder;
    Host host;
    Effect effect{host, EntryPointFunc};
};

Application& TheApplication() {
    static Application application;
    return application;
}

class Sequence {
  public:
    explicit Sequence(ByteSource& bytes) : bytes_(bytes), app_(TheApplication()), user_(bytes) {
        app_.begin();
        makePictures();
    }
    ~Sequence() {
        app_.host.givesBasicSuite = true;
        app_.host.calls.clearFault();
    }
    Sequence(const Sequence&) = delete;
    Sequence& operator=(const Sequence&) = delete;

    void step() {
        using Action = void (Sequence::*)();
        static constexpr Action actions[] = {
            &Sequence::makePictures, &Sequence::setControls, &Sequence::changeHost,
            &Sequence::injectFault,  &Sequence::sendPlain,   &Sequence::sendToInstance,
            &Sequence::resetup,      &Sequence::startAnew,   &Sequence::render,
            &Sequence::preRender,    &Sequence::smartRender, &Sequence::deleteData};
        (this->*actions[bytes_.below(std::size(actions))])();
        Require(app_.host.accounts.complaints().empty(), app_.host.accounts.complaints());
    }

  private:
    void check(const CommandResult& result) const {
        const bool known = result.ok() || result.error == PF_Err_OUT_OF_MEMORY ||
                           result.error == PF_Err_INTERNAL_STRUCT_DAMAGED ||
                           result.error == PF_Err_UNRECOGNIZED_PARAM_TYPE ||
                           result.error == PF_Err_BAD_CALLBACK_PARAM || result.error == kFaultCode;
        Require(known, "unknown code " + std::to_string(result.error));
    }

    MemoryStyle readStyle(int channelBytes) {
        return {.padding = channelBytes * bytes_.below(9),
                .misalignment = channelBytes * bytes_.below(4),
                .bottomUp = bytes_.flag(),
                .guarded = bytes_.below(4) == 0,
                .seed = bytes_.byte()};
    }

    std::unique_ptr<World> readPicture(PF_PixelFormat format, A_long width, A_long height) {
        auto world =
            std::make_unique<World>(format, width, height, readStyle(PixelBytes(format) / 4));
        const std::string texture = bytes_.text(static_cast<std::size_t>(bytes_.below(40))) + '\0';
        const int rowBytes = width * PixelBytes(format);
        for (A_long y = 0; y < height; ++y) {
            for (int i = 0; i < rowBytes; ++i)
                world->row<char>(y)[i] =
                    texture[static_cast<std::size_t>(y * 7 + i) % texture.size()];
        }
        return world;
    }

    void makePictures() {
        frame_.reset();
        const PF_PixelFormat format = ReadFormat(bytes_);
        const A_long width = 1 + bytes_.below(70), height = 1 + bytes_.below(6);
        input_ = readPicture(format, width, height);
        output_ = readPicture(format, width, height);
        app_.host.scratchMemory = readStyle(sizeof(PF_Pixel));
        app_.host.scratchMemory.bottomUp =
            false;  // the map's bytes follow each other from `data` on
    }

    void setControls() {
        for (A_long id = 1; id <= 7; ++id) {
            const A_long value = bytes_.mostlySmall();
            if (id == 4) {
                instance_->setColor(id, bytes_.raw<PF_Pixel>());
            } else {
                instance_->setSlider(id, value);  // a checkbox's value lies in the same place
            }
        }
    }

    void changeHost() {
        HostIdentity& identity = app_.host.identity;
        identity.applId = bytes_.oneOf(
            {PF_AppID_AfterEffects, PF_AppID_AfterEffects, PF_AppID_Premiere, A_long{0}});
        identity.version = {static_cast<A_short>(bytes_.below(20)),
                            static_cast<A_short>(bytes_.below(20))};
        identity.renderEngine = bytes_.flag();
        identity.mainWindow = bytes_.flag() ? &user_.window : nullptr;
        app_.host.givesBasicSuite = bytes_.below(8) != 0;
        app_.host.watchesInputs = bytes_.flag();
    }

    void injectFault() {
        app_.host.calls.clearFault();
        if (bytes_.flag()) return;
        app_.host.calls.inject({.call = {},
                                .nth = 1 + bytes_.below(40),
                                .shape = bytes_.oneOf({FaultShape::Error, FaultShape::Null}),
                                .code = kFaultCode,
                                .fromThereOn = bytes_.flag()});
    }

    void sendPlain() {
        switch (const int selector = bytes_.below(30)) {
            case PF_Cmd_PARAMS_SETUP:
                check(Effect(app_.effect).paramsSetup());
                break;
            case PF_Cmd_ABOUT:
            case PF_Cmd_GLOBAL_SETUP:
                check(app_.effect.send(selector));
                break;
            default:  // nothing that the effect knows
                Require(app_.effect.send(selector + 100).ok() && app_.effect.send(~selector).ok(),
                        "unknown command");
        }
    }

    void sendToInstance() {
        switch (bytes_.below(6)) {
            case 0:
                if (instance_->sequenceData() == nullptr) check(instance_->sequenceSetup());
                break;
            case 1:
                check(instance_->sequenceFlatten(flat_));
                break;
            case 2:
                check(instance_->sequenceSetdown());
                break;
            case 3:
                check(instance_->updateParamsUi());
                break;
            case 4:
                check(instance_->userChangedParam());
                break;
            default:
                check(instance_->doDialog());
                WriteText(app_.folder.file("nevrel.ini"), LAYOUT);
        }
    }

    void resetup() {
        if (bytes_.flag()) {
            const auto record = bytes_.raw<std::uint32_t>();
            flat_.assign(reinterpret_cast<const std::byte*>(&record),
                         reinterpret_cast<const std::byte*>(&record + 1));
        }
        check(flat_.size() < 4 ? instance_->sequenceResetup(std::nullopt)
                               : instance_->sequenceResetup(flat_));
    }

    void startAnew() {
        frame_.reset();
        instance_.emplace(app_.effect);
    }

    void render() {
        if (bytes_.below(4) != 0) {
            check(instance_->render(*input_, *output_));
            return;
        }
        const auto other =
            readPicture(ReadFormat(bytes_), input_->width() + bytes_.below(2), input_->height());
        const CommandResult result = instance_->render(*input_, *other);
        check(result);
        const bool fits = other->format() == input_->format() && other->width() == input_->width();
        Require(fits || !result.ok() || app_.host.identity.applId == PF_AppID_Premiere,
                "rendered into a misfit");
    }

    void preRender() {
        std::optional<PF_LRect> wanted;
        if (bytes_.flag()) {
            wanted = {bytes_.mostlySmall(), bytes_.mostlySmall(), bytes_.mostlySmall(),
                      bytes_.mostlySmall()};
        }
        frame_.emplace(*instance_, *input_, FrameTime{bytes_.byte(), 1, 24}, wanted);
        check(frame_->preRender());
    }

    void smartRender() {
        if (!frame_) return;
        const PF_LRect& area = frame_->preRenderOutput().result_rect;
        if (area.left < area.right && area.top < area.bottom) check(frame_->render(*output_));
    }

    void deleteData() {
        if (frame_) frame_->deletePreRenderData();
    }

    ByteSource& bytes_;
    Application& app_;
    User user_;
    std::unique_ptr<World> input_;
    std::unique_ptr<World> output_;
    std::vector<std::byte> flat_;
    std::optional<Instance> instance_{app_.effect};
    std::optional<Frame> frame_;
};

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    ByteSource bytes(data, size);
    {
        Sequence sequence(bytes);
        for (int i = 0; i < 60 && !bytes.empty(); ++i) sequence.step();
    }
    const Accounts& accounts = TheApplication().host.accounts;
    Require(accounts.kept().empty() && accounts.complaints().empty(),
            "something is kept: " + accounts.complaints());
    return 0;
}
