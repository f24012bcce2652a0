#include "qdscenegraph/nest/CSGNestWriter.h"

#include "qdcommon/CFileStream.h"
#include "qdscenegraph/nest/NestFile.h"
#include "qdscenegraph/resource/CSGResourceSet.h"
#include "qdscenegraph/streaming/CSGStreamableSaveState.h"

#include <filesystem>
#include <new>

boost::intrusive_ptr<CSGNestWriter> CSGNestWriter::Create() { return new (std::nothrow) CSGNestWriter; }

bool CSGNestWriter::SaveResourceSet(const CQDString& rFilename, CSGResourceSet* pResourceSet)
{
    QD_CHECK_ARG(pResourceSet, false);
    if (rFilename.find_first_of("/\\") != CQDString::npos)
    {
        const std::filesystem::path objDirectory = std::filesystem::path(rFilename).parent_path();
        if (objDirectory.empty())
        {
            Log(QD_SCENEGRAPH, LOG_ERROR, "Failed to get file directory from file %s", rFilename);
            return false;
        }
        std::error_code objError;
        std::filesystem::create_directories(objDirectory, objError);
        // What counts is that it is there: it may have been before, or another process may have been faster.
        if (!std::filesystem::is_directory(objDirectory, objError))
        {
            Log(QD_SCENEGRAPH, LOG_ERROR, "Failed to create file directory %s", objDirectory);
            return false;
        }
    }
    CFileStream objStream(rFilename, CFileStream::OPEN_WRITE | CFileStream::OPEN_TRUNCATE);
    if (!objStream.IsOpen())
    {
        Log(QD_SCENEGRAPH, LOG_ERROR, "Failed to open file \"%s\".", rFilename);
        return false;
    }

    CSGStreamableSaveState saveState;
    const int32_t nNumTopLevelNodes = pResourceSet->GetNumTopLevelNodes();
    for (int32_t n = 0; n < nNumTopLevelNodes; ++n)
    {
        CSGStreamable* pStreamable = pResourceSet->GetTopLevelNode(n);
        QD_CHECK_NOT_NULL(pStreamable, false);
        QD_CHECK_CALL(pStreamable->PreWrite(&saveState), false);
    }

    objStream.Write(NEST_SIGNATURE, sizeof(NEST_SIGNATURE));
    objStream.WriteInt32(NEST_VERSION_8_BIT_STRINGS);

    objStream.WriteInt32(saveState.GetNumTypes());
    for (int32_t n = 0; n < saveState.GetNumTypes(); ++n)
    {
        const SGStreamableType* pType = saveState.GetType(n);
        QD_CHECK_NOT_NULL(pType, false);
        uint64_t nGUID = 0;
        QD_CHECK_CALL(pType->GetGUID(nGUID), false);
        objStream.WriteUInt64(nGUID);
        objStream.WriteInt32(pType->GetLatestVersion());
    }

    objStream.WriteInt32(nNumTopLevelNodes);
    for (int32_t n = 0; n < nNumTopLevelNodes; ++n)
    {
        const CSGStreamable* pTopLevelNode = pResourceSet->GetTopLevelNode(n);
        QD_CHECK_NOT_NULL(pTopLevelNode, false);
        const int32_t nTopID = saveState.GetObjectID(pTopLevelNode);
        QD_CHECK(nTopID >= 0, false);
        objStream.WriteInt32(nTopID);
    }

    objStream.WriteInt32(saveState.GetNumObjects());
    for (int32_t nID = 0; nID < saveState.GetNumObjects(); ++nID)
    {
        CSGStreamable* pStreamable = saveState.GetObject(nID);
        QD_CHECK_NOT_NULL(pStreamable, false);
        const SGStreamableType* pType = pStreamable->GetSGStreamableType();
        QD_CHECK_NOT_NULL(pType, false);
        uint64_t nGUID = 0;
        QD_CHECK_CALL(pType->GetGUID(nGUID), false);
        objStream.WriteUInt64(nGUID);
        if (!pStreamable->WriteToStream(&objStream, &saveState))
        {
            QD_CHECK_FAILED("Call %s failed", "pStreamable->WriteToStream(&objStream,&saveState)");
            Log(QD_SCENEGRAPH, LOG_INFO, "WriteToStream failed for (CStreamableType*)0x%08llx name=%s",
                LogAddress(pType), pType->GetName());
            return false;
        }
    }
    if (!objStream.Close())
    {
        Log(QD_SCENEGRAPH, LOG_ERROR, "Failed to write all of file \"%s\".", rFilename);
        return false;
    }
    return true;
}
