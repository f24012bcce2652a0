// Builds a document of the COLLADA DOM from the elements, attributes and character data that an XML parser
// reports.
//
// Everything goes into the classes of COLLADA 1.4.1, whatever version or namespace a document names: 1.4
// and 1.5 share nearly all of what is read. Of 1.5 the file name of an image is taken from <init_from><ref>;
// what has no place in 1.4.1 is left out and named in the report, like every other unknown element. Inside a
// <technique> for extra data unknown elements are kept as domAny.
//
// A value that is no number (or none of its type) makes the document unusable: a wrong mesh is worse than
// none. Within extra data it is only reported.
#pragma once

#include "daedom/CDaeArrayWriter.h"
#include "daedom/CDaeContentModel.h"
#include "daedom/CDaeReport.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

class CDaeTreeBuilder
{
  public:
    // Elements nested deeper make a document unusable.
    static constexpr size_t MAX_DEPTH = 16384;

    // The URI is the document's name in the database of the DAE; the size is that of the file, against which
    // the memory for its elements is held.
    CDaeTreeBuilder(DAE& rDAE, CDaeReport& rReport, std::string strURI, uint64_t uiFileSize);

    // The attributes are names and values in turn, ended by null. Names are as written, prefixes included.
    void StartElement(std::string_view strName, const char* const* ppAttributes);
    void EndElement();
    void AddText(std::string_view strText);
    // Whether text goes straight into an array of numbers now.
    bool IsInNumbers() const;

    // The document begun with the root element; null before, and when the root is no COLLADA. In the DAE's
    // database.
    daeDocument* GetDocument() const { return m_pDocument; }

  private:
    enum class EText
    {
        None,    // the element has none; what stands there is left out
        Array,   // goes to the array writer
        Whole,   // gathered to the element's end
        Outward, // belongs to the element around
        Ignored  // reported as wrong already
    };

    struct CFrame
    {
        daeElement* pElement;
        CDaeContentModel::CRules* pRules;
        EText eText;
        bool bExtension;  // within extra data
        size_t nBindings; // namespace prefixes bound outside
        std::string strText;
    };

    struct CBinding
    {
        std::string strPrefix; // empty: the default namespace
        bool bCollada;
    };

    void BindNamespaces(const char* const* ppAttributes);
    bool IsCollada(std::string_view strPrefix, size_t nBindings) const;
    bool StartRoot(std::string_view strName, bool bCollada);
    bool StartChild(std::string_view strName, std::string_view strLocal, bool bCollada);
    bool CanMake(const CDaeContentModel::CRule& rRule, std::string_view strName);
    void Push(daeElement* pElement, CDaeContentModel::CRules* pRules, bool bExtension);
    void SetAttributes(daeElement& rElement, const char* const* ppAttributes);
    void SetAttribute(daeElement& rElement, size_t nIndex, const char* szValue);
    bool SetValue(daeElement& rElement, daeMetaAttribute& rAttribute, std::string_view strText);
    void ReportBadValue(daeElement& rElement, daeMetaAttribute& rAttribute, std::string_view strToken);

    DAE& m_rDAE;
    CDaeReport& m_rReport;
    std::string m_strURI;
    uint64_t m_uiFileSize;
    CDaeContentModel m_objModel;
    CDaeArrayWriter m_objArray; // of the innermost element: elements with arrays have no children
    daeDocument* m_pDocument = nullptr;
    std::vector<CFrame> m_arrFrames;
    std::vector<CBinding> m_arrBindings;
    std::string m_strRootNamespace;
    size_t m_nSkipped = 0;         // open elements that are left out, from the outermost inward
    size_t m_nBindingsOutside = 0; // of the element that is being started
    uint64_t m_uiElementBytes = 0;
    uint64_t m_uiTextBytes = 0;
};
