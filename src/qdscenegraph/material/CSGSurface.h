// The base of what a sampler reads: sources of images.
#pragma once

#include "qdscenegraph/object/CSGTypeInfo.h"
#include "qdscenegraph/streaming/CSGStreamable.h"
#include "qdscenegraph/texture/CSGTexture.h"

class CSGSurface : public SGStreamableInterface<CSGSurface>
{
  public:
    static constexpr const char* SG_TYPE_NAME = "CSGSurface";

    virtual const CSGTypeInfo<CSGSurface>* GetTypeInfo() const = 0;
    // Whether the surface is of the kind; a null kind is reported.
    bool InstanceOf(const CSGTypeInfo<CSGSurface>* pType) const;

    virtual CSGTextureLayout GetLayout() const = 0;
    virtual CSGTexture::EChangeFrequency GetChangeFrequency() const = 0;
    // Whether the image has changed since the renderer took it.
    virtual bool HasChanged() const = 0;

    // A kind that is saved overrides both.
    bool ReadFromStream(CStream* pStream, CSGStreamableLoadState* pLoadState) override;
    bool WriteToStream(CStream* pStream, CSGStreamableSaveState* pSaveState) override;

    // Written to the log at level 7, each line behind the indent.
    virtual void OutputDebugInfo(const CQDString& rIndent) const;
};

using CSGSurfacePtr = boost::intrusive_ptr<CSGSurface>;
