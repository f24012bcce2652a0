#include "fbxsdk/base/FbxObject.h"

#include "fbxsdk/objects/CFBXObject.h"

FbxObject::FbxObject(const CFBXObject* pObject) : m_pFileObject(pObject)
{
    if (pObject != nullptr)
    {
        m_strName = pObject->strName;
        m_nUniqueID = pObject->nId;
    }
}

FbxObject::~FbxObject() = default;

FbxProperty FbxObject::FindProperty(std::string_view strName) const
{
    return m_pFileObject != nullptr ? FbxProperty(m_pFileObject->objProperties.Find(strName)) : FbxProperty();
}

FbxProperty FbxObject::FindProperty(std::string_view strName, std::string_view strOtherName) const
{
    const FbxProperty objOther = FindProperty(strOtherName);
    return objOther.IsValid() ? objOther : FindProperty(strName);
}

std::vector<FbxProperty> FbxObject::GetProperties() const
{
    std::vector<FbxProperty> vecProperties;
    if (m_pFileObject != nullptr)
    {
        vecProperties.reserve(m_pFileObject->objProperties.size());
        for (const CFBXProperty& rProperty : m_pFileObject->objProperties)
        {
            vecProperties.emplace_back(&rProperty);
        }
    }
    return vecProperties;
}

void FbxObject::TakeLinksOf(const FbxObject& rOther)
{
    m_arrSources = rOther.m_arrSources;
    m_arrDestinations = rOther.m_arrDestinations;
}
