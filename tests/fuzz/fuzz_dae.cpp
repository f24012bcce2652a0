// Damaged COLLADA documents through the whole loader: no crash, no hang, nothing left behind.
//
// fuzz_dae [FILE [COUNT]]: truncations at every byte and COUNT (5 000) mutations of a document, by default
// of each of the small ones of the tests.

#include "MutateXml.h"
#include "UseScene.h"

#include "qdscenegraph/texture/CSGTex_2D.h"
#include "qdscenegraph/texture/CSGTextureLoader.h"
#include "qdsgloader_collada/CQDSGLoaderColladaLib.h"
#include "qdsgloader_collada/CSGLoaderCollada.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>

namespace
{

// False when a document leaves objects behind, or there is none.
bool TryMutations(const std::string& rFilename, size_t nCount)
{
    std::ifstream objSeed(rFilename, std::ios::binary);
    const std::string strSeed(std::istreambuf_iterator<char>(objSeed), {});
    std::mt19937 objRandom(8);
    const CTempFile objFile("mutation.dae");
    const CTempFile objSaved("saved.nest");
    CSGTex_2D::GetTextureFailedToLoad(); // made on first use and kept
    const int64_t nBlocks = CSGMem::GetPool().GetNumLiveBlocks();
    int nLoaded = 0;
    for (size_t n = 0; n < strSeed.size() + nCount; ++n)
    {
        objFile.WriteBytes(n < strSeed.size() ? strSeed.substr(0, n) : MutateXml(strSeed, objRandom));
        {
            const auto spLoader = CSGLoaderCollada::Create(CSGTextureLoader::CreateStandardLoader());
            const auto spSet = spLoader->LoadFile(objFile.GetName()) ? spLoader->LoadResourceSet() : nullptr;
            if (spSet)
            {
                ++nLoaded;
                UseScene(spSet.get(), objSaved);
            }
        }
        if (CSGMem::GetPool().GetNumLiveBlocks() != nBlocks)
        {
            std::printf("document %zu leaves objects behind\n", n);
            return false;
        }
    }
    std::printf("fuzz_dae: %zu documents tried, %d of them loaded (seed of %zu bytes)\n",
                strSeed.size() + nCount, nLoaded, strSeed.size());
    return !strSeed.empty();
}

} // namespace

int main(int argc, char** argv)
{
    const size_t nCount = argc > 2 ? std::strtoul(argv[2], nullptr, 10) : 5000;
    CQDSGLoaderColladaLib::InitLibrary();
    if (argc > 1)
    {
        return TryMutations(argv[1], nCount) ? 0 : 1;
    }
    const bool bTried = TryMutations(QDSG_TEST_DATA_DIR "/two_boxes.dae", nCount) &&
                        TryMutations(QDSG_TEST_DATA_DIR "/moving_box.dae", nCount) &&
                        TryMutations(QDSG_TEST_DATA_DIR "/dressed.dae", nCount);
    return bTried ? 0 : 1;
}
