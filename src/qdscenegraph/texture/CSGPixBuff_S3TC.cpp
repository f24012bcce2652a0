#include "qdscenegraph/texture/CSGPixBuff_S3TC.h"

namespace
{
const SGStreamableRegistration<CSGPixBuff_RGB_S3TC_DXT1> s_objRGB_DXT1(0x1F7C83699FF6A4A4, 1, 1);
const SGStreamableRegistration<CSGPixBuff_RGBA_S3TC_DXT1> s_objRGBA_DXT1(0x7146D4D61D2FEB91, 1, 1);
const SGStreamableRegistration<CSGPixBuff_RGBA_S3TC_DXT3> s_objRGBA_DXT3(0x96AE860DFCC45658, 1, 1);
const SGStreamableRegistration<CSGPixBuff_RGBA_S3TC_DXT5> s_objRGBA_DXT5(0x363A77FAD1C9CDA9, 1, 1);
} // namespace
