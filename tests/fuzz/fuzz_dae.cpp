// Damaged COLLADA documents through the whole loader: no crash, no hang, nothing left behind.
//
// fuzz_dae [FILE [COUNT]]: truncations at every byte and COUNT (10 000) mutations of a document, by default a
// small one of the tests.

#include "MutateXml.h"
#include "UseScene.h"

#include "qdscenegraph/texture/CSGTextureLoader.h"
#include "qdsgloader_collada/CQDSGLoaderColladaLib.h"
#include "qdsgloader_collada/CSGLoaderCollada.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>

int main(int argc, char** argv)
{
    std::ifstream objSeed(argc > 1 ? argv[1] : QDSG_TEST_DATA_DIR "/two_boxes.dae", std::ios::binary);
    const std::string strSeed(std::istreambuf_iterator<char>(objSeed), {});
    const size_t nCount = argc > 2 ? std::strtoul(argv[2], nullptr, 10) : 10000;
    std::mt19937 objRandom(8);
    CQDSGLoaderColladaLib::InitLibrary();
    const CTempFile objFile("mutation.dae");
    const CTempFile objSaved("saved.nest");
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
            return 1;
        }
    }
    std::printf("fuzz_dae: %zu documents tried, %d of them loaded (seed of %zu bytes)\n",
                strSeed.size() + nCount, nLoaded, strSeed.size());
    return strSeed.empty() ? 1 : 0;
}
