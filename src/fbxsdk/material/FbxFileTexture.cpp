#include "fbxsdk/material/FbxFileTexture.h"

#include "fbxsdk/document/CFBXRecord.h"
#include "fbxsdk/material/FbxVideo.h"
#include "fbxsdk/objects/CFBXObject.h"

std::unique_ptr<FbxFileTexture> FbxFileTexture::Create(const CFBXObjectTable&, const CFBXObject& rObject)
{
    std::unique_ptr<FbxFileTexture> spTexture(new FbxFileTexture(&rObject));
    if (rObject.pRecord != nullptr)
    {
        spTexture->m_strFileName = LimitFBXFileName(rObject.pRecord->GetChildString("FileName"));
        spTexture->m_strRelativeFileName =
            LimitFBXFileName(rObject.pRecord->GetChildString("RelativeFilename"));
    }
    return spTexture;
}

void FbxFileTexture::OnConnected()
{
    const std::vector<FbxVideo*> vecMedia = GetSrcObjects<FbxVideo>();
    m_pMedia = vecMedia.empty() ? nullptr : vecMedia.front();
}

const CQDString& FbxFileTexture::GetFileName() const
{
    return m_strFileName.empty() && m_pMedia != nullptr ? m_pMedia->GetFileName() : m_strFileName;
}

const CQDString& FbxFileTexture::GetRelativeFileName() const
{
    return m_strRelativeFileName.empty() && m_pMedia != nullptr ? m_pMedia->GetRelativeFileName()
                                                                : m_strRelativeFileName;
}
