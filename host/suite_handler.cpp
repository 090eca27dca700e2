#include "host/suite_handler.h"

#include <cassert>

SuiteHandler::SuiteHandler(SPBasicSuite* basicSuite) : basicSuite_(basicSuite) {
    if (basicSuite_ == nullptr) throw PF_Err{PF_Err_BAD_CALLBACK_PARAM};
}

SuiteHandler::~SuiteHandler() {
    for (const Slot& slot : slots_) {
        if (slot.suite != nullptr) basicSuite_->ReleaseSuite(slot.key->name, slot.key->version);
    }
}

const void* SuiteHandler::acquire(const SuiteKey& key) {
    Slot& slot = slots_[key.slot];
    assert(slot.suite == nullptr || slot.key == &key);
    if (slot.suite == nullptr) {
        const void* suite = nullptr;
        if (basicSuite_->AcquireSuite(key.name, key.version, &suite) != 0 || suite == nullptr) {
            throw PF_Err{PF_Err_BAD_CALLBACK_PARAM};
        }
        slot = {suite, &key};
    }
    return slot.suite;
}
