#include "host/suite_handler.h"

SuiteHandler::SuiteHandler(SPBasicSuite* basicSuite) : basicSuite_(basicSuite) {
    if (basicSuite_ == nullptr) throw PF_Err{PF_Err_BAD_CALLBACK_PARAM};
}

SuiteHandler::~SuiteHandler() {
    for (const Slot& slot : slots_) {
        if (slot.suite != nullptr) basicSuite_->ReleaseSuite(slot.name, slot.version);
    }
}

const void* SuiteHandler::acquire(std::size_t slot, const char* name, A_long version) {
    Slot& entry = slots_.at(slot);
    if (entry.suite == nullptr) {
        const void* suite = nullptr;
        if (basicSuite_->AcquireSuite(name, version, &suite) != 0 || suite == nullptr) {
            throw PF_Err{PF_Err_BAD_CALLBACK_PARAM};
        }
        entry = {suite, name, version};
    }
    return entry.suite;
}
