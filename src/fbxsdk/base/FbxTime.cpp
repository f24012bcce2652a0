#include "fbxsdk/base/FbxTime.h"

#include <cmath>
#include <limits>

FbxTime FbxTime::FromSeconds(double dSeconds)
{
    const double dTicks = std::round(dSeconds * static_cast<double>(TICKS_PER_SECOND));
    if (std::isnan(dTicks))
    {
        return FbxTime();
    }
    constexpr double LIMIT = 9223372036854775808.0; // 2^63
    return FbxTime(dTicks >= LIMIT   ? std::numeric_limits<int64_t>::max()
                   : dTicks < -LIMIT ? std::numeric_limits<int64_t>::min()
                                     : static_cast<int64_t>(dTicks));
}

double FbxTime::GetFrameRate(EMode eMode)
{
    switch (eMode)
    {
    case eFrames120:
        return 120;
    case eFrames100:
        return 100;
    case eFrames60:
        return 60;
    case eFrames50:
        return 50;
    case eFrames48:
        return 48;
    case eNTSCDropFrame:
    case eNTSCFullFrame:
        return 30000.0 / 1001.0;
    case ePAL:
        return 25;
    case eFrames24:
        return 24;
    case eFrames1000:
        return 1000;
    case eFilmFullFrame:
        return 24000.0 / 1001.0;
    case eFrames96:
        return 96;
    case eFrames72:
        return 72;
    case eFrames59dot94:
        return 60000.0 / 1001.0;
    case eFrames119dot88:
        return 120000.0 / 1001.0;
    default:
        return 30;
    }
}
