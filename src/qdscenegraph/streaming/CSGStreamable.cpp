#include "qdscenegraph/streaming/CSGStreamable.h"

#include "qdscenegraph/streaming/CSGStreamableSaveState.h"

bool CSGStreamable::NotifyObjectLoaded(int32_t, CSGStreamable*, CSGStreamableLoadState*)
{
    Log(QD_SCENEGRAPH, LOG_ERROR, "Invalid call of base function.");
    return false;
}

bool CSGStreamable::PreWrite(CSGStreamableSaveState* pSaveState)
{
    QD_CHECK_ARG(pSaveState, false);
    QD_CHECK_CALL(pSaveState->AddObject(this), false);
    return true;
}

bool CSGStreamable::PostRead(CSGStreamableLoadState*) { return true; }
