// Damaged NEST files: no crash, no hang, nothing left behind, no memory beyond a small multiple of the file.
//
// fuzz_nest [COUNT]: truncations at every byte and COUNT (10 000) mutations of each of the small files that
// together hold every class.

#include "CMutator.h"
#include "UseScene.h"

#include "qdscenegraph/nest/CSGNestReader.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>

namespace
{

void TryDamagedCopies(const std::string& rSeed, int nCount)
{
    const CTempFile objFile("mutation.nest");
    const CTempFile objSaved("saved.nest");
    int nLoaded = 0;
    int nTried = 0;
    int64_t nBlocks = -1;
    CMutator(rSeed).ForEach(nCount, [&](const std::string& rBytes) {
        objFile.WriteBytes(rBytes);
        {
            const auto spReader = CSGNestReader::Create();
            if (spReader->LoadFile(objFile.GetName()))
            {
                ++nLoaded;
                UseScene(spReader->m_spResourceSet.get(), objSaved);
            }
        }
        ++nTried;
        // Of the first file on: some textures are made once and kept.
        const int64_t nLeft = CSGMem::GetPool().GetNumLiveBlocks();
        if (nBlocks >= 0 && nLeft != nBlocks)
        {
            std::printf("mutation %d leaves objects behind\n", nTried);
            std::exit(1);
        }
        nBlocks = nLeft;
    });
    std::printf("fuzz_nest: %d files tried, %d of them loaded (seed of %zu bytes)\n", nTried, nLoaded,
                rSeed.size());
}

} // namespace

int main(int argc, char** argv)
{
    const int nCount = argc > 1 ? std::atoi(argv[1]) : 10000;
    for (const char* szName : {"every_class.nest", "every_dressing_class.nest", "every_animation_class.nest",
                               "every_skin_class.nest"})
    {
        std::ifstream objSeed(QDSG_TEST_DATA_DIR "/" + std::string(szName), std::ios::binary);
        const std::string strSeed{std::istreambuf_iterator<char>(objSeed), {}};
        if (strSeed.empty())
        {
            std::printf("cannot read %s\n", szName);
            return 1;
        }
        TryDamagedCopies(strSeed, nCount);
    }
    return 0;
}
