// The designer's view of one property. It is made when asked for and keeps no value of its own.
#pragma once

#include "ambrel/properties/property_core.h"
#include "frame/com/dispatch.h"

#include <limits>
#include <memory>

namespace ambrel {

/// What a designer notes about a property. Outlives the descriptor objects, which come and go.
struct DescriptorState {
    template <class Value>
    struct Range {
        Value least = std::numeric_limits<Value>::lowest();
        Value most = std::numeric_limits<Value>::max();
    };

    short status = 0;
    long identifier = 0;
    bool isAccessible = true;
    hyper pointer = 0;
    Range<int> intRange;
    Range<long> longRange;
    Range<float> floatRange;
};

DescriptorState& descriptorStateOf(PropertyCore& property);

/// Keeps its property. Asking a property twice while a descriptor of it lives gives the same object.
class PropertyDescriptor final : public morvane::Dispatch<IVexPropType>, public InSmallBlock {
public:
    static morvane::ComPtr<IVexPropType> of(PropertyCore& property);

    STDMETHODIMP QueryInterface(REFIID iid, void** result) noexcept override;
    STDMETHODIMP_(ULONG) AddRef() noexcept override { return ++m_references; }
    STDMETHODIMP_(ULONG) Release() noexcept override;

    STDMETHODIMP get_strName(BSTR* result) noexcept override;
    STDMETHODIMP put_strName(BSTR name) noexcept override;
    STDMETHODIMP get_eType(enumPropType* result) noexcept override;
    STDMETHODIMP put_eType(enumPropType type) noexcept override;
    STDMETHODIMP get_vtValue(VARIANT* result) noexcept override;
    STDMETHODIMP put_vtValue(VARIANT value) noexcept override;
    STDMETHODIMP get_strHelp(BSTR* result) noexcept override;
    STDMETHODIMP put_strHelp(BSTR help) noexcept override;
    STDMETHODIMP get_nStatus(short* result) noexcept override;
    STDMETHODIMP put_nStatus(short status) noexcept override;
    /// The value as text, as configurations store it.
    STDMETHODIMP get_strValue(BSTR* result) noexcept override;
    STDMETHODIMP put_strValue(BSTR text) noexcept override;
    STDMETHODIMP get_lPropId(long* result) noexcept override;
    STDMETHODIMP put_lPropId(long identifier) noexcept override;
    /// -1, and refused, for a property without choices.
    STDMETHODIMP get_nComboSelItem(long* result) noexcept override;
    STDMETHODIMP put_nComboSelItem(long index) noexcept override;
    STDMETHODIMP get_bAccess(VARIANT_BOOL* result) noexcept override;
    STDMETHODIMP put_bAccess(VARIANT_BOOL isAccessible) noexcept override;
    STDMETHODIMP get_pIDispatch(IDispatch** result) noexcept override;
    STDMETHODIMP put_pIDispatch(IDispatch* value) noexcept override;
    /// A number of the designer's own; never followed.
    STDMETHODIMP get_pVoid(hyper* result) noexcept override;
    STDMETHODIMP put_pVoid(hyper pointer) noexcept override;
    /// Ranges are the designer's advice; setting a value does not check them. A range from high to low is refused.
    STDMETHODIMP SetIntPropMinMax(int least, int most) noexcept override;
    STDMETHODIMP GetIntPropMinMax(int* least, int* most) noexcept override;
    STDMETHODIMP SetLongPropMinMax(long least, long most) noexcept override;
    STDMETHODIMP GetLongPropMinMax(long* least, long* most) noexcept override;
    STDMETHODIMP SetFloatPropMinMax(float least, float most) noexcept override;
    STDMETHODIMP GetFloatPropMinMax(float* least, float* most) noexcept override;
    /// Where the choice is kept; valid while the property lives. S_FALSE and null for a property without choices.
    STDMETHODIMP GetComboSelItemIndexPtr(long** result) noexcept override;
    STDMETHODIMP GetPropBase(IVexPropBase** result) noexcept override;
    /// Turns to another property. E_INVALIDARG for one of another runtime.
    STDMETHODIMP SetPropBase(IVexPropBase* property) noexcept override;
    STDMETHODIMP GetParentProp(ICtrlPluginProp** result) noexcept override;
    /// Moves the property to another group.
    STDMETHODIMP SetParentProp(ICtrlPluginProp* group) noexcept override;

private:
    explicit PropertyDescriptor(PropertyCore& property);
    ~PropertyDescriptor();

    void attach(PropertyCore& property);
    class ComboPropertyObject* combo() const noexcept;

    std::uint32_t m_references = 0;
    PropertyCore* m_property = nullptr;
    morvane::ComPtr<IVexPropBase> m_hold;
    std::shared_ptr<DescriptorState> m_state;
};

} // namespace ambrel
