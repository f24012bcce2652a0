#include "qdscenegraph/texture/CSGPixBuff_Bytes.h"

namespace
{
const SGStreamableRegistration<CSGPixBuff_R8G8B8> s_objR8G8B8(0xDD1C94F02BF4792A, 1, 1);
const SGStreamableRegistration<CSGPixBuff_A8R8G8B8> s_objA8R8G8B8(0xEC2B639CAD7AC993, 1, 1);
const SGStreamableRegistration<CSGPixBuff_R8G8B8A8> s_objR8G8B8A8(0x758769EFF7BD4EBA, 1, 1);
const SGStreamableRegistration<CSGPixBuff_L8> s_objL8(0x33BF7E3A1D24A5BA, 1, 1);
const SGStreamableRegistration<CSGPixBuff_A8B8G8R8> s_objA8B8G8R8(0x53626F0954D6D4A8, 1, 1);
} // namespace
