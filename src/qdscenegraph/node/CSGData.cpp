#include "qdscenegraph/node/CSGData.h"

namespace
{
const SGStreamableRegistration<CSGData> s_objRegistration(0x71461D30E88B44F3, 1, 1);
}

boost::intrusive_ptr<CSGData> CSGData::CreateCopy(CSGCopyData*) const
{
    Log(QD_SCENEGRAPH, LOG_WARNING, "Implement me!");
    return nullptr;
}

bool CSGData::PostCopy(CSGCopyData*) { return true; }

bool CSGData::NotifyAddedToNode(CSGNode*) { return true; }

bool CSGData::NotifyRemovedFromNode(CSGNode*) { return true; }

bool CSGData::NotifyNodeDestroyed(CSGNode*) { return true; }

bool CSGData::NotifyNodeAddedToParent(CSGNode*, CSGNode*) { return true; }

bool CSGData::NotifyNodeRemovedFromParent(CSGNode*, CSGNode*) { return true; }

bool CSGData::NotifyDataAddedToNode(CSGNode*, CSGData*) { return true; }

bool CSGData::NotifyDataRemovedFromNode(CSGNode*, CSGData*) { return true; }

bool CSGData::NotifyChildAddedToNode(CSGNode*, CSGNode*) { return true; }

bool CSGData::NotifyChildRemovedFromNode(CSGNode*, CSGNode*) { return true; }

bool CSGData::AttachScene(CSGScene*, CSGNode*) { return true; }

bool CSGData::PopulateRenderLists(CSGScene*, CSGNode*) { return true; }

const CSGBounds* CSGData::GetDeformedBounds(CSGNode*) const { return nullptr; }

void CSGData::OutputTransformDebugInfo(const CQDString&) const {}

void CSGData::AddGeomStats(CSGGeomStats&) const {}
