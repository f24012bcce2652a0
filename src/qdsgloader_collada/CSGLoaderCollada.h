// Loads COLLADA documents.
#pragma once

#include "qdscenegraph/animation/CSGAnimation.h"
#include "qdscenegraph/loader/CSGLoader.h"
#include "qdsgloader_collada/ColladaDomFwd.h"

#include <map>
#include <memory>
#include <optional>
#include <unordered_map>

template <class T>
class CPointerMap;
class CAnimationSliceData;
class CColladaAnimChannels;
struct CColladaController;
class CColladaDataSourceCache;
class CColladaGeometry;
class CColladaGeometrySet;
class CColladaJointNames;
class CColladaMaterials;
class CColladaNodeConverter;
class CColladaSkinSet;
class CDaeFile;
class CSGTextureLoader;
class CSGTexturePool;

// Reads ".dae" files, and ".anim" files, which name one of those and cut its animations. The library must be
// initialised (CQDSGLoaderColladaLib). All use stays on one thread. The document and the geometry and
// materials made from it are held until the next LoadFile; every LoadSceneGraph makes new nodes, which share
// them.
class CSGLoaderCollada final : public CSGLoader
{
  public:
    static boost::intrusive_ptr<CSGLoaderCollada> Create(
        const boost::intrusive_ptr<CSGTextureLoader>& spTextureLoader);
    ~CSGLoaderCollada() override;

    // The pool that textures are looked up in first; null for none. To be set before LoadFile.
    void SetTexturePool(const boost::intrusive_ptr<CSGTexturePool>& spTexturePool);

    bool CanLoadFile(const CQDString& rStrFilename) const override;
    bool LoadFile(const CQDString& rStrFilename) override;
    boost::intrusive_ptr<CSGNode> LoadSceneGraph() override;
    EUpAxis LoadUpAxis() override;
    // The pieces that the animations document names, in its order; of a ".dae" file its <animation_clip>
    // elements. The loader keeps them.
    bool LoadAnimations(std::vector<CSGAnimation*>& rvecAnimations) override;
    // All channels from their first key to their last, without a name; null when there are none.
    boost::intrusive_ptr<CSGAnimation> LoadDefaultAnimation() override;
    // Of the animations of both kinds the first of the name; null when there is none.
    boost::intrusive_ptr<CSGAnimation> LoadAnimation(const CQDString& rStrName);

    // The pieces of a geometry, converted on first use; the loader keeps them. Null (reported) on failure.
    CColladaGeometrySet* LoadGeometry(ColladaDOM141::domGeometry& rGeometry);
    // What the controller comes to, found and converted on first use; the loader keeps it.
    const CColladaController& LoadController(ColladaDOM141::domController& rController);
    // The materials of the document that is loaded.
    CColladaMaterials& GetMaterials() const { return *m_spMaterials; }

    // The element that a URI, or an id, refers to. Null (reported) when there is none or it is of another
    // type, and for a URI that leads out of its document. Of several elements with the id the first of the
    // type counts. Types are the DOM's.
    static daeElement* GetURIElement(const daeURI& rURI, int32_t nExpectedType);
    static daeElement* GetIDElement(DAE* pDAE, const CQDString& rStrID, int32_t nExpectedType);
    template <class T>
    static T* GetURIElement(const daeURI& rURI)
    {
        return static_cast<T*>(GetURIElement(rURI, T::ID()));
    }
    // The same for an element of any type; not reported. Of several elements with the id the first of the
    // preferred type counts.
    static daeElement* FindURIElement(const daeURI& rURI, int32_t nPreferredType);
    static daeElement* FindIDElement(DAE& rDAE, const CQDString& rStrID, int32_t nPreferredType);

  private:
    CSGLoaderCollada();

    bool LoadDAEFile(const CQDString& rStrFilename);
    bool LoadAnimSliceFile(const CQDString& rStrFilename);
    void Clear();
    // Null without a document.
    ColladaDOM141::domCOLLADA* GetRoot() const;

    // The skin of a controller over the pieces of a geometry; null (reported) on failure.
    boost::intrusive_ptr<CColladaSkinSet> LoadSkin(ColladaDOM141::domController& rController,
                                                   const CColladaGeometrySet& rGeometries);
    boost::intrusive_ptr<CSGNode> LoadScene(ColladaDOM141::domCOLLADA& rRoot);
    bool LoadAllLibraries(ColladaDOM141::domCOLLADA& rRoot, CColladaNodeConverter& rConverter);
    bool LoadLibraryGeometries(ColladaDOM141::domCOLLADA& rRoot);
    bool LoadLibraryNodes(ColladaDOM141::domCOLLADA& rRoot, CColladaNodeConverter& rConverter);
    bool LoadLibraryVisualScenes(ColladaDOM141::domCOLLADA& rRoot, CColladaNodeConverter& rConverter);
    boost::intrusive_ptr<CSGNode> LoadVisualScene(ColladaDOM141::domVisual_scene& rScene,
                                                  CColladaNodeConverter& rConverter);

    using CChannelList = CSGAnimation::CChannelList;
    using CChannelSetMap = std::map<CQDString, CPointerMap<bool>>; // the names in a set, by their characters
    // False (reported) when the animations cannot be made; they are made once.
    bool LoadAllAnimations();
    bool LoadAllLibraryAnimations(ColladaDOM141::domCOLLADA& rRoot);
    bool LoadSlices(const CChannelList& rVecChannels);
    void LoadClips(ColladaDOM141::domCOLLADA& rRoot, const CColladaAnimChannels& rChannels);
    void LoadClip(ColladaDOM141::domAnimation_clip& rClip, const CColladaAnimChannels& rChannels);
    // Chooses from all channels those in the set, or when it is to be ignored the others.
    static bool GetChannels(const CQDString& rStrChannel, bool bIgnoreChannel, CChannelList& rVecOutput,
                            const CChannelSetMap& rMapChannelSet, const CChannelList& rVecChannels);
    // A named animation more; null (reported) when it cannot be.
    CSGAnimation::CAnimationPtr AddAnimation(const CQDCompactString& rName, const CChannelList& rVecChannels,
                                             float fBeginTime, std::optional<float> fEndTime);

    boost::intrusive_ptr<CSGTextureLoader> m_spTextureLoader;
    boost::intrusive_ptr<CSGTexturePool> m_spTexturePool;
    std::unique_ptr<CDaeFile> m_spFile;
    CQDString m_strFilename;
    std::unique_ptr<CColladaDataSourceCache> m_spDataSources;
    std::unique_ptr<CColladaMaterials> m_spMaterials;   // null without a document
    std::unique_ptr<CAnimationSliceData> m_spSliceData; // null without an animations document
    std::optional<bool> m_bAnimationsLoaded;            // empty: not tried yet
    CSGAnimation::CAnimationPtr m_spDefaultAnimation;
    std::vector<CSGAnimation::CAnimationPtr> m_vecAnimations;
    size_t m_nAnimationChannels = 0; // in all of them
    // Null for a geometry that failed.
    std::unordered_map<ColladaDOM141::domGeometry*, boost::intrusive_ptr<CColladaGeometrySet>>
        m_mapGeometrySets;
    std::unordered_map<ColladaDOM141::domController*, CColladaController> m_mapControllers;
    std::unique_ptr<CColladaJointNames> m_spJointNames; // made for the first skin
    // The node of every visual scene of the scene graph that is being loaded.
    std::unordered_map<ColladaDOM141::domVisual_scene*, boost::intrusive_ptr<CSGNode>> m_mapVisualScenes;
};
