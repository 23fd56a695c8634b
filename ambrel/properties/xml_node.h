// A configuration node towards the outside.
#pragma once

#include "ambrel/properties/config_node.h"
#include "frame/com/dispatch.h"
#include "frame/com/instance.h"
#include "host/host.h"

#include <memory>

namespace ambrel {

/// The object behind IVexXMLNode. It keeps its node alive, also after the node's tree is gone. Without a node every
/// operation answers S_FALSE. Other nodes are given as objects of this runtime; foreign ones are E_INVALIDARG.
class XmlNode : public morvane::Dispatch<IVexXMLNode> {
public:
    /// An object for a node; null for null.
    static morvane::ComPtr<IVexXMLNode> of(std::shared_ptr<ConfigNode> node);

    HRESULT finalConstruct() noexcept { return S_OK; }
    void finalRelease() noexcept {}
    void* findInterface(REFIID iid) noexcept;

    STDMETHODIMP GetXMLNode(hyper* result) noexcept override;
    /// Turns to another node; 0 leaves the object without one. E_INVALIDARG for a handle that is no node.
    STDMETHODIMP SetXMLNode(hyper node) noexcept override;

    // Reading an attribute that is absent or not of the kind leaves the value alone and answers false.
    STDMETHODIMP AccessAttribLong(BSTR name, long* value, VARIANT_BOOL read, VARIANT_BOOL* result) noexcept override;
    STDMETHODIMP AccessAttribFloat(BSTR name, float* value, VARIANT_BOOL read, VARIANT_BOOL* result) noexcept override;
    STDMETHODIMP AccessAttribDouble(BSTR name, double* value, VARIANT_BOOL read,
                                    VARIANT_BOOL* result) noexcept override;
    STDMETHODIMP AccessAttribBOOL(BSTR name, VARIANT_BOOL* value, VARIANT_BOOL read,
                                  VARIANT_BOOL* result) noexcept override;
    /// The string read replaces the one in `*value`, which is freed.
    STDMETHODIMP AccessAttribString(BSTR name, BSTR* value, VARIANT_BOOL read, VARIANT_BOOL* result) noexcept override;
    STDMETHODIMP AccessAttribColor(BSTR name, OLE_COLOR* value, VARIANT_BOOL read,
                                   VARIANT_BOOL* result) noexcept override;

    /// The child leaves the tree; deleting it also empties `node`.
    STDMETHODIMP RemoveChild(IVexXMLNode* node, VARIANT_BOOL isDeleted) noexcept override;
    STDMETHODIMP InsertAfterChild(IVexXMLNode* afterThis, IVexXMLNode* addThis) noexcept override;
    STDMETHODIMP InsertBeforeChild(IVexXMLNode* beforeThis, IVexXMLNode* addThis) noexcept override;
    STDMETHODIMP InsertEndChild(IVexXMLNode* node) noexcept override;
    /// A node in no tree yet.
    STDMETHODIMP CreateNewVexXMLNode(BSTR name, IVexXMLNode** result) noexcept override;
    STDMETHODIMP FirstChild(IVexXMLNode** result) noexcept override;
    /// The next child of this node's parent.
    STDMETHODIMP NextChild(IVexXMLNode** result) noexcept override;
    STDMETHODIMP QueryIntAttribute(BSTR name, long* result) noexcept override;
    /// The empty string, and S_FALSE, when absent.
    STDMETHODIMP Attribute(BSTR name, BSTR* result) noexcept override;
    STDMETHODIMP SetAttribute(BSTR name, BSTR value) noexcept override;

private:
    static XmlNode* from(IVexXMLNode* node) noexcept;
    HRESULT insertBeside(IVexXMLNode* sibling, IVexXMLNode* added, std::size_t offset) noexcept;
    template <class Value, class Parse, class Format>
    HRESULT access(BSTR name, Value* value, VARIANT_BOOL read, VARIANT_BOOL* result, Parse parse,
                   Format format) noexcept;

    std::shared_ptr<ConfigNode> m_node;
};

/// The interface object of a handle: null for 0 and for handles that are no node.
morvane::ComPtr<IVexXMLNode> xmlNodeOf(NodeHandle handle);

} // namespace ambrel
