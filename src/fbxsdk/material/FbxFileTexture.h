// A texture that is an image.
#pragma once

#include "fbxsdk/material/FbxTexture.h"

#include <memory>

class CFBXObjectTable;
class FbxVideo;

class FbxFileTexture final : public FbxTexture
{
  public:
    static std::unique_ptr<FbxFileTexture> Create(const CFBXObjectTable& rTable, const CFBXObject& rObject);

    // As the tool wrote them, often for another system: the full name, and the name relative to the file.
    // What the texture does not say is its media's.
    const CQDString& GetFileName() const;
    const CQDString& GetRelativeFileName() const;
    // The image, which textures may share; null when the file has none for it.
    const FbxVideo* GetMedia() const { return m_pMedia; }

  protected:
    void OnConnected() override;

  private:
    using FbxTexture::FbxTexture;

    CQDString m_strFileName; // as the texture says it
    CQDString m_strRelativeFileName;
    const FbxVideo* m_pMedia = nullptr;
};
