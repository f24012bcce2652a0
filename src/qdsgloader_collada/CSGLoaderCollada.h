// Loads COLLADA documents.
#pragma once

#include "qdscenegraph/loader/CSGLoader.h"
#include "qdsgloader_collada/ColladaDomFwd.h"

#include <memory>
#include <unordered_map>

class CColladaDataSourceCache;
class CColladaGeometry;
class CColladaGeometrySet;
class CColladaNodeConverter;
class CDaeFile;
class CSGTextureLoader;
class CSGTexturePool;

// Reads ".dae" files. The library must be initialised (CQDSGLoaderColladaLib). All use stays on one thread.
// The document and the geometry made from it are held until the next LoadFile; every LoadSceneGraph makes new
// nodes, which share that geometry.
class CSGLoaderCollada final : public CSGLoader
{
  public:
    static boost::intrusive_ptr<CSGLoaderCollada> Create(
        const boost::intrusive_ptr<CSGTextureLoader>& spTextureLoader);
    ~CSGLoaderCollada() override;

    // The pool that textures are looked up in first; null for none.
    void SetTexturePool(const boost::intrusive_ptr<CSGTexturePool>& spTexturePool);

    bool CanLoadFile(const CQDString& rStrFilename) const override;
    bool LoadFile(const CQDString& rStrFilename) override;
    boost::intrusive_ptr<CSGNode> LoadSceneGraph() override;
    EUpAxis LoadUpAxis() override;
    bool LoadAnimations(std::vector<CSGAnimation*>& rvecAnimations) override;
    boost::intrusive_ptr<CSGAnimation> LoadDefaultAnimation() override;
    // The animation of the name; null when there is none.
    boost::intrusive_ptr<CSGAnimation> LoadAnimation(const CQDString& rStrName);

    // The pieces of a geometry, converted on first use; the loader keeps them. Null (reported) on failure.
    CColladaGeometrySet* LoadGeometry(ColladaDOM141::domGeometry& rGeometry);

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

  private:
    CSGLoaderCollada();

    bool LoadDAEFile(const CQDString& rStrFilename);
    bool LoadAnimSliceFile(const CQDString& rStrFilename);
    void Clear();
    // Null without a document.
    ColladaDOM141::domCOLLADA* GetRoot() const;

    boost::intrusive_ptr<CSGNode> LoadScene(ColladaDOM141::domCOLLADA& rRoot);
    bool LoadAllLibraries(ColladaDOM141::domCOLLADA& rRoot, CColladaNodeConverter& rConverter);
    bool LoadLibraryGeometries(ColladaDOM141::domCOLLADA& rRoot);
    bool LoadLibraryNodes(ColladaDOM141::domCOLLADA& rRoot, CColladaNodeConverter& rConverter);
    bool LoadLibraryVisualScenes(ColladaDOM141::domCOLLADA& rRoot, CColladaNodeConverter& rConverter);
    boost::intrusive_ptr<CSGNode> LoadVisualScene(ColladaDOM141::domVisual_scene& rScene,
                                                  CColladaNodeConverter& rConverter);
    // Names what is read over: no animation is converted yet.
    void LoadAllAnimations();

    boost::intrusive_ptr<CSGTextureLoader> m_spTextureLoader;
    boost::intrusive_ptr<CSGTexturePool> m_spTexturePool;
    std::unique_ptr<CDaeFile> m_spFile;
    CQDString m_strFilename;
    std::unique_ptr<CColladaDataSourceCache> m_spDataSources;
    // Null for a geometry that failed.
    std::unordered_map<ColladaDOM141::domGeometry*, boost::intrusive_ptr<CColladaGeometrySet>>
        m_mapGeometrySets;
    // The node of every visual scene of the scene graph that is being loaded.
    std::unordered_map<ColladaDOM141::domVisual_scene*, boost::intrusive_ptr<CSGNode>> m_mapVisualScenes;
};
