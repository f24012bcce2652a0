#include "qdsgloader_fbx/CQDSGLoaderFBXLib.h"

CLogSource QD_FBX("QD_FBX");

bool CQDSGLoaderFBXLib::InitLibrary() { return true; }
