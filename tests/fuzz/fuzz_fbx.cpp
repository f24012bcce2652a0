// Damaged FBX files through the whole loader: no crash, no hang, nothing left behind.
//
//     fuzz_fbx [COUNT [FILE...]]
//
// Truncations at every byte and COUNT (5 000) mutations of each file, or of two small ones of the tests: one
// as text, packed, and of the other width and byte order, and one of the older kind as text and as records.
#include "../unit/support/FBXTestFile.h"
#include "CFBXTextMutator.h"
#include "CMutator.h"
#include "UseScene.h"

#include "fbxsdk/document/CFBXDocument.h"
#include "qdscenegraph/texture/CSGTex_2D.h"
#include "qdscenegraph/texture/CSGTextureLoader.h"
#include "qdsgloader_fbx/CSGLoaderFBX.h"

#include <algorithm>
#include <cmath>
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

using CAnyValue = std::variant<int64_t, double, std::vector<int64_t>, std::vector<double>, std::string>;

// "Class::Name" of an ASCII file as binary ones have it.
std::string ToBinaryName(std::string_view strText)
{
    const size_t nColons = strText.find("::");
    return nColons == std::string_view::npos
               ? std::string(strText)
               : std::string(strText.substr(nColons + 2)) + std::string("\0\1", 2) +
                     std::string(strText.substr(0, nColons));
}

CAnyValue CopyValue(const CFBXRecord& rRecord, const CFBXValue& rValue)
{
    if (rValue.IsArray())
    {
        std::vector<double> vecNumbers;
        rRecord.ReadDoubles(vecNumbers);
        if (std::ranges::any_of(vecNumbers, [](double d) { return d != std::floor(d); }))
        {
            return vecNumbers;
        }
        std::vector<int64_t> vecWhole;
        rRecord.ReadInt64s(vecWhole);
        return vecWhole;
    }
    if (rValue.IsNumber())
    {
        return rValue.GetType() == EFBXType::INT ? CAnyValue(rValue.GetInt64())
                                                 : CAnyValue(rValue.GetDouble());
    }
    return ToBinaryName(rValue.GetString());
}

void Copy(const CFBXRecord& rRecord, CFBXTestFile& rFile)
{
    std::vector<CAnyValue> vecValues;
    for (const CFBXValue& rValue : rRecord.GetValues())
    {
        vecValues.push_back(CopyValue(rRecord, rValue));
    }
    rFile.Open(rRecord.GetName(), vecValues);
    for (const CFBXRecord& rChild : rRecord.GetChildren())
    {
        Copy(rChild, rFile);
    }
    rFile.Close();
}

std::string Encode(const std::string& rText, int nVersion, bool bBigEndian, bool bDeflate)
{
    CQDString strError;
    const auto spDocument = CFBXDocument::FromBytes({rText.begin(), rText.end()}, strError);
    CFBXTestFile objFile(nVersion, bBigEndian, bDeflate);
    for (const CFBXRecord& rRecord : spDocument->GetRoot().GetChildren())
    {
        Copy(rRecord, objFile);
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
    const auto TryAndCount = [&](const std::string& rBytes) {
        Try(rBytes);
        if (CSGMem::GetPool().GetNumLiveBlocks() != nBlocks)
        {
            std::printf("file %d leaves objects behind\n", nTried);
            std::exit(1);
        }
    };
    CMutator(rSeed).ForEach(nCount, TryAndCount);
    CFBXTextMutator objTextMutator(rSeed);
    for (int n = 0; rSeed.front() == ';' && n < nCount; ++n)
    {
        TryAndCount(objTextMutator.Mutate());
    }
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
    const std::string strArm = Read(QDSG_TEST_DATA_DIR "/moving_arm.fbx");
    const std::string strBox = Read(QDSG_TEST_DATA_DIR "/old_box.fbx");
    for (const std::string& rSeed :
         {strArm, Encode(strArm, 7400, false, true), Encode(strArm, 7500, true, false), strBox,
          Encode(strBox, 6100, false, false)})
    {
        if (!TryDamagedCopies(rSeed, nCount))
        {
            return 1;
        }
    }
    return 0;
}
