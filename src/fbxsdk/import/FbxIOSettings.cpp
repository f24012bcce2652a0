#include "fbxsdk/import/FbxIOSettings.h"

#include "qdcommon/CLogChecks.h"

std::unique_ptr<FbxIOSettings> FbxIOSettings::Create(FbxManager* pManager, CQDString strName)
{
    QD_CHECK_ARG(pManager, nullptr);
    return std::unique_ptr<FbxIOSettings>(new FbxIOSettings(std::move(strName)));
}
