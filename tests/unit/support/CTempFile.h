// A file name in a folder of its own, which goes with everything in it.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

class CTempFile
{
  public:
    explicit CTempFile(const std::string& rName)
    {
        std::string strFolder = (std::filesystem::temp_directory_path() / "qdsg-XXXXXX").string();
        m_objFolder = mkdtemp(strFolder.data());
        m_objPath = m_objFolder / rName;
    }
    CTempFile(const std::string& rName, const std::string& rBytes) : CTempFile(rName) { WriteBytes(rBytes); }
    CTempFile(const CTempFile&) = delete;
    CTempFile& operator=(const CTempFile&) = delete;
    ~CTempFile()
    {
        std::error_code objError;
        std::filesystem::remove_all(m_objFolder, objError);
    }

    std::string GetName() const { return m_objPath.string(); }
    void WriteBytes(const std::string& rBytes) const
    {
        Remove(); // writing over a file's content makes some file systems wait for the disk
        std::ofstream(m_objPath, std::ios::binary)
            .write(rBytes.data(), static_cast<std::streamsize>(rBytes.size()));
    }
    void Remove() const
    {
        std::error_code objError;
        std::filesystem::remove(m_objPath, objError);
    }
    std::string ReadBytes() const
    {
        std::ifstream objFile(m_objPath, std::ios::binary);
        return {std::istreambuf_iterator<char>(objFile), {}};
    }

  private:
    std::filesystem::path m_objFolder;
    std::filesystem::path m_objPath;
};
