#include <algorithm>
#include <array>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <memory>
#include <new>
#include <string>
#include <utility>

#include "host_kit/callbacks.h"
#include "host_kit/command.h"
#include "host_kit/instance.h"

namespace host_kit {
namespace {

// PF Handle Suite

PF_Handle NewHandle(A_HandleSize size) {
    Command& command = Command::current();
    if (command.enter(HostCall::NewHandle, static_cast<A_long>(size)).fault) return nullptr;
    PF_Handle handle = command.host.handles.make(size);
    if (handle != nullptr) command.lend(LoanKind::Handle, handle, static_cast<A_long>(size));
    return handle;
}

void* LockHandle(PF_Handle handle) {
    Command& command = Command::current();
    if (command.enter(HostCall::LockHandle).fault || handle == nullptr) return nullptr;
    void* memory = command.host.handles.lock(handle);
    if (command.allows(memory != nullptr, "lock of a handle that is none"))
        command.lend(LoanKind::Lock, handle);
    return memory;
}

void UnlockHandle(PF_Handle handle) {
    Command& command = Command::current();
    command.enter(HostCall::UnlockHandle);
    if (command.allows(command.host.handles.unlock(handle),
                       "unlock of a handle that is not locked"))
        command.giveBack(LoanKind::Lock, handle);
}

void DisposeHandle(PF_Handle handle) {
    Command& command = Command::current();
    command.enter(HostCall::DisposeHandle);
    if (command.allows(command.host.handles.dispose(handle),
                       "disposal of a handle that is locked or none"))
        command.giveBack(LoanKind::Handle, handle);
}

A_HandleSize GetHandleSize(PF_Handle handle) {
    Command& command = Command::current();
    command.enter(HostCall::GetHandleSize);
    return command.host.handles.bytes(handle).size();
}

const PF_HandleSuite1 handleSuite{NewHandle,     LockHandle,    UnlockHandle,
                                  DisposeHandle, GetHandleSize, nullptr};

// PF World Suite

/// Padding belongs to a scratch image, so it is made of pixels that the record does not tell of.
PF_Err MakeWorld(Command& command, A_long width, A_long height, PF_EffectWorld& record) try {
    MemoryStyle style = command.host.scratchMemory;
    const A_long padding = std::exchange(style.padding, 0) / PixelBytes(PF_PixelFormat_ARGB32);
    auto world = std::make_unique<World>(PF_PixelFormat_ARGB32, width + padding, height, style);
    record = world->record();
    record.width = record.extent_hint.right = width;
    command.lend(LoanKind::World, world.get(), width);
    command.scratch.push_back(std::move(world));
    return PF_Err_NONE;
} catch (const std::bad_alloc&) {
    return PF_Err_OUT_OF_MEMORY;
}

PF_Err NewWorld(PF_ProgPtr effectRef, A_long width, A_long height, A_long flags,
                PF_EffectWorld* world) {
    Command* command = Command::of(effectRef);
    if (command == nullptr || world == nullptr || width <= 0 || height <= 0 || flags != 0)
        return PF_Err_BAD_CALLBACK_PARAM;
    const std::string size = std::to_string(width) + " x " + std::to_string(height);
    const CallVerdict verdict = command->enter(HostCall::NewWorld, width, size.c_str());
    *world = {};
    // An error leaves something behind that is no world.
    if (verdict.fault == FaultShape::Error) world->data = command;
    return verdict.fault ? verdict.result() : MakeWorld(*command, width, height, *world);
}

PF_Err DisposeWorld(PF_ProgPtr effectRef, PF_EffectWorld* record) {
    Command* command = Command::of(effectRef);
    if (command == nullptr) return PF_Err_BAD_CALLBACK_PARAM;
    const CallVerdict verdict = command->enter(HostCall::DisposeWorld);
    const auto found =
        std::find_if(command->scratch.begin(), command->scratch.end(), [=](const auto& world) {
            return record != nullptr && world.get() == record->platform_ref;
        });
    if (!command->allows(found != command->scratch.end(), "disposal of no scratch image"))
        return PF_Err_BAD_CALLBACK_PARAM;
    command->expect((*found)->guardsIntact(), "wrote outside a scratch image");
    command->giveBack(LoanKind::World, found->get());
    command->scratch.erase(found);
    *record = {};
    return verdict.result();
}

const PF_WorldSuite1 worldSuite1{NewWorld, DisposeWorld};

PF_Err GetPixelFormat(const PF_EffectWorld* record, PF_PixelFormat* format) {
    Command& command = Command::current();
    const CallVerdict verdict = command.enter(HostCall::GetPixelFormat);
    if (verdict.fault) return verdict.result();
    const World* world = command.find(record);
    if (world == nullptr || format == nullptr) return PF_Err_BAD_CALLBACK_PARAM;
    *format = world->format();
    return PF_Err_NONE;
}

const PF_WorldSuite2 worldSuite2{nullptr, nullptr, GetPixelFormat};

// PF World Transform Suite

PF_Err CopyWorld(PF_ProgPtr effectRef, PF_EffectWorld* source, PF_EffectWorld* target,
                 PF_Rect* sourceRect, PF_Rect* targetRect) {
    Command* command = Command::of(effectRef);
    if (command == nullptr) return PF_Err_BAD_CALLBACK_PARAM;
    const CallVerdict verdict = command->enter(HostCall::CopyWorld);
    if (verdict.fault) return verdict.result();
    const World* from = command->find(source);
    const World* to = command->find(target);
    if (from == nullptr || to == nullptr || from->format() != to->format() ||
        sourceRect != nullptr || targetRect != nullptr) {
        return PF_Err_BAD_CALLBACK_PARAM;  // this host copies whole images only
    }
    const auto rowLength = static_cast<std::size_t>(std::min(source->width, target->width)) *
                           static_cast<std::size_t>(PixelBytes(from->format()));
    for (std::ptrdiff_t y = 0; y < std::min(source->height, target->height); ++y) {
        std::memcpy(static_cast<std::byte*>(target->data) + y * target->rowbytes,
                    static_cast<const std::byte*>(source->data) + y * source->rowbytes, rowLength);
    }
    return PF_Err_NONE;
}

const PF_WorldTransformSuite1 worldTransformSuite{nullptr, nullptr, nullptr, CopyWorld, {}};

// PF Param Utils Suite, PF AE App Suite, PF ANSI Suite

PF_Err UpdateParamUi(PF_ProgPtr effectRef, PF_ParamIndex index, const PF_ParamDef* def) {
    Command* command = Command::of(effectRef);
    if (command == nullptr || def == nullptr) return PF_Err_BAD_CALLBACK_PARAM;
    const CallVerdict verdict = command->enter(HostCall::UpdateParamUi, index);
    if (verdict.fault) return verdict.result();
    const bool inTurn = command->selector == PF_Cmd_UPDATE_PARAMS_UI ||
                        command->selector == PF_Cmd_USER_CHANGED_PARAM;
    Instance* instance = inTurn ? command->instance : nullptr;
    if (instance == nullptr) {
        command->violation("update of a control out of turn");
        return PF_Err_BAD_CALLBACK_PARAM;
    }
    return instance->updateControl(index, *def) ? PF_Err_NONE : PF_Err_BAD_CALLBACK_PARAM;
}

const PF_ParamUtilsSuite1 paramUtilsSuite{UpdateParamUi, {}};

PF_Err IsRenderEngine(PF_Boolean* renderEngine) {
    Command& command = Command::current();
    const CallVerdict verdict = command.enter(HostCall::IsRenderEngine);
    if (verdict.fault) return verdict.result();
    if (renderEngine == nullptr) return PF_Err_BAD_CALLBACK_PARAM;
    *renderEngine = command.host.identity.renderEngine ? 1 : 0;
    return PF_Err_NONE;
}

const PFAppSuite4 appSuite{{}, IsRenderEngine, {}};

const PF_ANSICallbacksSuite1 ansiSuite{{}, Sprintf, Strcpy, nullptr, nullptr};

// The basic suite

struct SuiteEntry {
    const char* name;
    A_long version;
    const void* suite;
};

constexpr std::array<SuiteEntry, 7> suites{{
    {kPFHandleSuite, kPFHandleSuiteVersion1, &handleSuite},
    {kPFANSISuite, kPFANSISuiteVersion1, &ansiSuite},
    {kPFWorldSuite, kPFWorldSuiteVersion1, &worldSuite1},
    {kPFWorldSuite, kPFWorldSuiteVersion2, &worldSuite2},
    {kPFWorldTransformSuite, kPFWorldTransformSuiteVersion1, &worldTransformSuite},
    {kPFParamUtilsSuite, kPFParamUtilsSuiteVersion1, &paramUtilsSuite},
    {kPFAppSuite, kPFAppSuiteVersion4, &appSuite},
}};

constexpr A_long noSuchSuite = PF_Err_BAD_CALLBACK_PARAM;

const SuiteEntry* FindSuite(const char* name, A_long version) {
    const auto found = std::find_if(suites.begin(), suites.end(), [=](const SuiteEntry& entry) {
        return entry.version == version && std::strcmp(entry.name, name) == 0;
    });
    return found == suites.end() ? nullptr : &*found;
}

A_long AcquireSuite(const char* name, A_long version, const void** suite) {
    Command& command = Command::current();
    const CallVerdict verdict = command.enter(HostCall::AcquireSuite, version, name);
    *suite = nullptr;
    if (verdict.fault) return verdict.result();
    const SuiteEntry* entry = FindSuite(name, version);
    if (entry == nullptr) return noSuchSuite;
    *suite = entry->suite;
    command.lend(LoanKind::Suite, entry, version, entry->name);
    return PF_Err_NONE;
}

A_long ReleaseSuite(const char* name, A_long version) {
    Command& command = Command::current();
    const CallVerdict verdict = command.enter(HostCall::ReleaseSuite, version, name);
    const SuiteEntry* entry = FindSuite(name, version);
    if (!command.allows(entry != nullptr, "release of an unknown suite")) return noSuchSuite;
    command.giveBack(LoanKind::Suite, entry);
    return verdict.result();
}

}  // namespace

SPBasicSuite* BasicSuite() {
    static SPBasicSuite suite{AcquireSuite, ReleaseSuite, {}};
    return &suite;
}

int Sprintf(char* dst, const char* format, ...) {
    Command::current().enter(HostCall::Sprintf, 0, format);
    std::va_list arguments;
    va_start(arguments, format);
    // NOLINTNEXTLINE(clang-analyzer-valist.Uninitialized): va_start has just set it
    const int length = std::vsprintf(dst, format, arguments);
    va_end(arguments);
    return length;
}

char* Strcpy(char* dst, const char* src) {
    Command::current().enter(HostCall::Strcpy, 0, src);
    // NOLINTNEXTLINE(clang-analyzer-security.insecureAPI.strcpy): the host's function has no bound
    return std::strcpy(dst, src);
}

}  // namespace host_kit
