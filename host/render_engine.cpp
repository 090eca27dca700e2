#include "host/render_engine.h"

#include <cassert>

#include "host/suite_handler.h"

bool IsRenderEngine(const PF_InData* inData) {
    assert(inData != nullptr);
    if (inData->appl_id != PF_AppID_AfterEffects) return false;
    SuiteHandler suites(inData->pica_basicP);
    PF_Boolean renderEngine = 0;
    // A host that cannot tell leaves the flag alone: it has a user interface.
    static_cast<void>(suites.get<PFAppSuite4>().PF_IsRenderEngine(&renderEngine));
    return renderEngine != 0;
}
