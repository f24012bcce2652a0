#include "fbxsdk/material/FbxVideo.h"

#include "fbxsdk/document/CFBXLog.h"
#include "fbxsdk/document/CFBXRecord.h"
#include "fbxsdk/objects/CFBXObject.h"
#include "fbxsdk/objects/FBXObjectName.h"
#include "qdcommon/CLog.h"

#include <array>

namespace
{

constexpr int8_t NOT_A_DIGIT = -1;

constexpr std::array<int8_t, 256> MakeDigits()
{
    constexpr std::string_view DIGITS = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::array<int8_t, 256> arrDigits{};
    arrDigits.fill(NOT_A_DIGIT);
    for (size_t n = 0; n < DIGITS.size(); ++n)
    {
        arrDigits[static_cast<uint8_t>(DIGITS[n])] = static_cast<int8_t>(n);
    }
    return arrDigits;
}

// Takes the texts of an ASCII file one after the other: tools break long ones up wherever they like.
class CBase64Decoder
{
  public:
    explicit CBase64Decoder(std::vector<uint8_t>& rvecOutput) : m_rvecOutput(rvecOutput) {}

    // False for a character that is not base64 (RFC 4648), and for data behind the padding.
    bool Decode(std::string_view strText)
    {
        static constexpr std::array<int8_t, 256> DIGITS = MakeDigits();
        for (const char c : strText)
        {
            const int8_t nDigit = DIGITS[static_cast<uint8_t>(c)];
            if (c == '=')
            {
                ++m_nPadding;
            }
            else if (nDigit == NOT_A_DIGIT || m_nPadding > 0)
            {
                return false;
            }
            else
            {
                m_uiBits = m_uiBits << 6 | static_cast<uint32_t>(nDigit);
                m_nBits += 6;
                if (m_nBits >= 8)
                {
                    m_nBits -= 8;
                    m_rvecOutput.push_back(static_cast<uint8_t>(m_uiBits >> m_nBits));
                }
            }
        }
        return true;
    }
    // Whether all that was begun was ended: groups of four characters, padded.
    bool IsComplete() const { return m_nBits != 6 && (m_nPadding == 0 || m_nPadding * 2 == m_nBits); }

  private:
    std::vector<uint8_t>& m_rvecOutput;
    uint32_t m_uiBits = 0;
    int m_nBits = 0; // of a byte that is not complete
    int m_nPadding = 0;
};

} // namespace

std::unique_ptr<FbxVideo> FbxVideo::Create(const CFBXObjectTable&, const CFBXObject& rObject)
{
    std::unique_ptr<FbxVideo> spVideo(new FbxVideo(&rObject));
    if (const CFBXRecord* pRecord = rObject.pRecord)
    {
        // Tools do not agree on the case.
        spVideo->m_strFileName = LimitFBXFileName(pRecord->GetChildString("Filename"));
        if (spVideo->m_strFileName.empty())
        {
            spVideo->m_strFileName = LimitFBXFileName(pRecord->GetChildString("FileName"));
        }
        spVideo->m_strRelativeFileName = LimitFBXFileName(pRecord->GetChildString("RelativeFilename"));
        if (const CFBXRecord* pContent = pRecord->FindChild("Content"))
        {
            spVideo->ReadContent(*pContent);
        }
    }
    return spVideo;
}

void FbxVideo::ReadContent(const CFBXRecord& rContent)
{
    // Binary files have bytes, ASCII files base64; both may be in pieces.
    CBase64Decoder objDecoder(m_vecContent);
    const std::span<const CFBXValue> arrValues = rContent.GetValues();
    size_t nTextBytes = 0;
    for (const CFBXValue& rValue : arrValues)
    {
        nTextBytes += rValue.GetType() == EFBXType::STRING ? rValue.GetBytes().size() : 0;
    }
    m_vecContent.reserve(nTextBytes / 4 * 3);
    for (const CFBXValue& rValue : arrValues)
    {
        if (rValue.GetType() == EFBXType::RAW)
        {
            const std::string_view strBytes = rValue.GetBytes();
            const auto* pBytes = reinterpret_cast<const uint8_t*>(strBytes.data());
            if (arrValues.size() == 1)
            {
                m_arrContent = {pBytes, strBytes.size()};
                return;
            }
            m_vecContent.insert(m_vecContent.end(), pBytes, pBytes + strBytes.size());
        }
        else if (!objDecoder.Decode(rValue.GetString()))
        {
            Log(FBXSDK, LOG_ERROR, "Embedded content of video '%s' is not base64 (%s)", GetName(),
                rContent.Describe());
            m_vecContent.clear();
            return;
        }
    }
    if (!objDecoder.IsComplete())
    {
        Log(FBXSDK, LOG_ERROR, "Embedded content of video '%s' ends too early (%s)", GetName(),
            rContent.Describe());
        m_vecContent.clear();
    }
    m_arrContent = m_vecContent;
}
