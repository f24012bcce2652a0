#include "fbxsdk/material/FbxFileTexture.h"

#include "fbxsdk/document/CFBXRecord.h"
#include "fbxsdk/material/FbxVideo.h"
#include "fbxsdk/objects/CFBXObject.h"

std::unique_ptr<FbxFileTexture> FbxFileTexture::Create(const CFBXObjectTable&, const CFBXObject& rObject)
{
    std::unique_ptr<FbxFileTexture> spTexture(new FbxFileTexture(&rObject));
    if (rObject.pRecord != nullptr)
    {
        spTexture->m_strFileName = rObject.pRecord->GetChildString("FileName");
        spTexture->m_strRelativeFileName = rObject.pRecord->GetChildString("RelativeFilename");
    }
    return spTexture;
}

void FbxFileTexture::OnConnected()
{
    const std::vector<FbxVideo*> vecMedia = GetSrcObjects<FbxVideo>();
    if (vecMedia.empty())
    {
        return;
    }
    m_pMedia = vecMedia.front();
    if (m_strFileName.empty())
    {
        m_strFileName = m_pMedia->GetFileName();
    }
    if (m_strRelativeFileName.empty())
    {
        m_strRelativeFileName = m_pMedia->GetRelativeFileName();
    }
}
