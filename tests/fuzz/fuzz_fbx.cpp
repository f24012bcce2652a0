// Damaged FBX files through the whole loader: no crash, no hang, nothing left behind.
//
//     fuzz_fbx [COUNT [FILE...]]
//
// Truncations at every byte and COUNT (5 000) mutations of each file, or of a small one of the tests in three
// encodings: as text, packed, and of the other width and byte order.
#include "../unit/support/FBXTestFile.h"
#include "CMutator.h"
#include "UseScene.h"

#include "fbxsdk/document/CFBXDocument.h"
#include "qdscenegraph/texture/CSGTex_2D.h"
#include "qdscenegraph/texture/CSGTextureLoader.h"
#include "qdsgloader_fbx/CSGLoaderFBX.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>

namespace
{

std::string Read(const char* szFilename)
{
    std::ifstream objFile(szFilename, std::ios::binary);
    return {std::istreambuf_iterator<char>(objFile), {}};
}

std::string Encode(const std::string& rText, int nVersion, bool bBigEndian, bool bDeflate)
{
    CQDString strError;
    const auto spDocument = CFBXDocument::FromBytes({rText.begin(), rText.end()}, strError);
    CFBXTestFile objFile(nVersion, bBigEndian, bDeflate);
    for (const CFBXRecord& rRecord : spDocument->GetRoot().GetChildren())
    {
        objFile.Copy(rRecord);
    }
    const std::vector<uint8_t> vecBytes = objFile.Finish();
    return {vecBytes.begin(), vecBytes.end()};
}

// False when a file leaves objects behind, or the undamaged one does not load.
bool TryDamagedCopies(const std::string& rSeed, int nCount)
{
    const CTempFile objFile("mutation.fbx");
    const CTempFile objSaved("saved.nest");
    CSGTex_2D::GetTextureFailedToLoad(); // made on first use and kept
    const int64_t nBlocks = CSGMem::GetPool().GetNumLiveBlocks();
    int nTried = 0;
    int nLoaded = 0;
    const auto Try = [&](const std::string& rBytes) {
        objFile.WriteBytes(rBytes);
        ++nTried;
        // Every combination of quaternions and resampling in turn.
        const auto spLoader = CSGLoaderFBX::Create(CSGTextureLoader::CreateStandardLoader(),
                                                   (nTried & 1) != 0, (nTried & 2) != 0);
        const auto spSet = spLoader->LoadFile(objFile.GetName()) ? spLoader->LoadResourceSet() : nullptr;
        if (spSet)
        {
            ++nLoaded;
            UseScene(spSet.get(), objSaved);
        }
        return spSet != nullptr;
    };
    if (!Try(rSeed))
    {
        std::printf("the undamaged file does not load\n");
        return false;
    }
    CMutator(rSeed).ForEach(nCount, [&](const std::string& rBytes) {
        Try(rBytes);
        if (CSGMem::GetPool().GetNumLiveBlocks() != nBlocks)
        {
            std::printf("file %d leaves objects behind\n", nTried);
            std::exit(1);
        }
    });
    std::printf("fuzz_fbx: %d files tried, %d of them loaded (seed of %zu bytes)\n", nTried, nLoaded,
                rSeed.size());
    return true;
}

} // namespace

int main(int argc, char** argv)
{
    const int nCount = argc > 1 ? std::atoi(argv[1]) : 5000;
    for (int n = 2; n < argc; ++n)
    {
        if (!TryDamagedCopies(Read(argv[n]), nCount))
        {
            return 1;
        }
    }
    if (argc > 2)
    {
        return 0;
    }
    const std::string strText = Read(QDSG_TEST_DATA_DIR "/moving_arm.fbx");
    return TryDamagedCopies(strText, nCount) &&
                   TryDamagedCopies(Encode(strText, 7400, false, true), nCount) &&
                   TryDamagedCopies(Encode(strText, 7500, true, false), nCount)
               ? 0
               : 1;
}
