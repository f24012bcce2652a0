#include "fbxsdk/animation/FbxAnimStack.h"

#include "fbxsdk/base/CFBXTimeScale.h"
#include "fbxsdk/objects/CFBXObject.h"

std::unique_ptr<FbxAnimStack> FbxAnimStack::Create(const CFBXObjectTable& rTable, const CFBXObject& rObject)
{
    std::unique_ptr<FbxAnimStack> spStack(new FbxAnimStack(&rObject));
    const CFBXTimeScale objTimeScale(rTable);
    spStack->m_objLocalTimeSpan.m_objStart = objTimeScale(rObject.objProperties.GetInt64("LocalStart"));
    spStack->m_objLocalTimeSpan.m_objStop = objTimeScale(rObject.objProperties.GetInt64("LocalStop"));
    return spStack;
}
