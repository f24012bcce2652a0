#include "qdscenegraph/texture/CSGTexLdr_SOIL.h"

#include "qdscenegraph/texture/CImageReader_BMP.h"
#include "qdscenegraph/texture/CImageReader_DDS.h"
#include "qdscenegraph/texture/CImageReader_JPEG.h"
#include "qdscenegraph/texture/CImageReader_PNG.h"
#include "qdscenegraph/texture/CImageReader_TGA.h"
#include "qdscenegraph/texture/CSGTex_2D.h"
#include "qdscenegraph/texture/CSGTextureFileReloadHandler.h"
#include "qdscenegraph/texture/CSGTextureNameReloadHandler.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <new>
#include <string_view>

namespace
{

using namespace std::string_view_literals;

// No texture has more bytes than this, and no image file needs more than its texture.
constexpr uintmax_t MAX_FILE_SIZE = 0x7FFFFFFF;

struct CKind
{
    std::string_view m_strSignature; // '?' stands for any byte
    const char* m_szName;
    CImage::TRead m_fnRead; // null for kinds that are known but not read
};

constexpr CKind KINDS[] = {{"\x89PNG"sv, "PNG", &CImageReader_PNG::Read},
                           {"\xFF\xD8\xFF"sv, "JPEG", &CImageReader_JPEG::Read},
                           {"BM"sv, "BMP", &CImageReader_BMP::Read},
                           {"DDS "sv, "DDS", &CImageReader_DDS::Read},
                           {"GIF8"sv, "GIF", nullptr},
                           {"II*\0"sv, "TIFF", nullptr},
                           {"MM\0*"sv, "TIFF", nullptr},
                           {"RIFF????WEBP"sv, "WebP", nullptr},
                           {"8BPS"sv, "Photoshop", nullptr},
                           {"v/1\x01"sv, "OpenEXR", nullptr},
                           {"#?RADIANCE"sv, "Radiance", nullptr},
                           {"\xABKTX"sv, "KTX", nullptr},
                           {"version https://git-lfs"sv, "Git LFS pointer", nullptr}};
constexpr CKind KIND_TGA = {""sv, "TGA", &CImageReader_TGA::Read};

bool HasSignature(std::span<const uint8_t> arrFile, std::string_view strSignature)
{
    return arrFile.size() >= strSignature.size() &&
           std::ranges::equal(arrFile.first(strSignature.size()), strSignature,
                              [](uint8_t ui, char c) { return c == '?' || ui == static_cast<uint8_t>(c); });
}

bool HasExtensionTGA(std::string_view strName)
{
    return strName.size() >= 4 &&
           std::ranges::equal(strName.substr(strName.size() - 4), ".tga"sv,
                              [](char a, char b) { return a == b || (a | 0x20) == b; });
}

const CKind* FindKind(std::span<const uint8_t> arrFile, const CQDString& rName)
{
    for (const CKind& rKind : KINDS)
    {
        if (HasSignature(arrFile, rKind.m_strSignature))
        {
            return &rKind;
        }
    }
    return HasExtensionTGA(rName) || CImageReader_TGA::IsPlausible(arrFile) ? &KIND_TGA : nullptr;
}

CSGTex_2DPtr MakeTexture(std::span<const uint8_t> arrFile, const CQDString& rName, CQDString& rReason)
{
    if (arrFile.empty())
    {
        rReason = "the file is empty";
        return nullptr;
    }
    const CKind* pKind = FindKind(arrFile, rName);
    if (pKind == nullptr)
    {
        rReason = "this is no PNG, JPEG, TGA, BMP or DDS file";
        return nullptr;
    }
    if (pKind->m_fnRead == nullptr)
    {
        rReason = CQDString(pKind->m_szName) + " files are not supported";
        return nullptr;
    }
    CImage objImage;
    if (!pKind->m_fnRead(arrFile, objImage, rReason))
    {
        rReason = CQDString(pKind->m_szName) + ": " + rReason;
        return nullptr;
    }
    const CSGTex_2DPtr spTexture =
        CSGTex_2D::Create(objImage.m_spPixels->GetFormat(), objImage.m_nWidth, objImage.m_nHeight,
                          objImage.m_nLevels, objImage.m_nWidth, objImage.m_nHeight, objImage.m_spPixels);
    if (!spTexture)
    {
        rReason = "the texture could not be made";
    }
    return spTexture;
}

struct CFileBytes
{
    std::unique_ptr<uint8_t[]> m_spBytes;
    size_t m_nSize = 0;
};

// The whole file at once, or the reason why not.
bool ReadFile(const CQDString& rFilename, CFileBytes& rBytes, CQDString& rReason)
{
    std::error_code objError;
    const std::filesystem::file_status objStatus = std::filesystem::status(rFilename, objError);
    if (!std::filesystem::exists(objStatus))
    {
        rReason =
            objStatus.type() == std::filesystem::file_type::not_found ? "no such file" : objError.message();
        return false;
    }
    if (!std::filesystem::is_regular_file(objStatus))
    {
        rReason =
            std::filesystem::is_directory(objStatus) ? "this is a directory" : "this is no regular file";
        return false;
    }
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> spFile(std::fopen(rFilename.c_str(), "rb"),
                                                                 &std::fclose);
    const uintmax_t uiSize = std::filesystem::file_size(rFilename, objError);
    if (!spFile || objError)
    {
        rReason = "the file cannot be opened";
        return false;
    }
    if (uiSize > MAX_FILE_SIZE)
    {
        rReason = "the file is larger than 2 GB";
        return false;
    }
    rBytes.m_nSize = static_cast<size_t>(uiSize);
    rBytes.m_spBytes.reset(new (std::nothrow) uint8_t[rBytes.m_nSize]);
    if (!rBytes.m_spBytes)
    {
        rReason = "not enough memory";
        return false;
    }
    std::setvbuf(spFile.get(), nullptr, _IONBF, 0);
    if (std::fread(rBytes.m_spBytes.get(), 1, rBytes.m_nSize, spFile.get()) != rBytes.m_nSize)
    {
        rReason = "the file cannot be read";
        return false;
    }
    return true;
}

} // namespace

CSGTexturePtr CSGTexLdr_SOIL::ReadTexture(const CQDString& rFilename, CQDString& rReason)
{
    CFileBytes objBytes;
    if (!ReadFile(rFilename, objBytes, rReason))
    {
        return nullptr;
    }
    const CSGTex_2DPtr spTexture =
        MakeTexture({objBytes.m_spBytes.get(), objBytes.m_nSize}, rFilename, rReason);
    if (spTexture)
    {
        spTexture->SetReloadHandler(new (std::nothrow) CSGTextureFileReloadHandler(rFilename));
    }
    return spTexture;
}

CSGTexturePtr CSGTexLdr_SOIL::ReadTextureFromMemory(std::span<const uint8_t> arrFile, const CQDString& rName,
                                                    CQDString& rReason)
{
    const CSGTex_2DPtr spTexture = MakeTexture(arrFile, rName, rReason);
    if (spTexture)
    {
        spTexture->SetReloadHandler(new (std::nothrow) CSGTextureNameReloadHandler(rName));
    }
    return spTexture;
}
