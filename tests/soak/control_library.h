// The classes of Morvane.dll that exist, with what their interfaces offer, as the type library tells.
#pragma once

#include "frame/com/com_ptr.h"
#include "host/host.h"

#include <string>
#include <vector>

namespace morvane::soak {

/// A parameter as a call needs it.
struct Parameter {
    enum class Kind {
        Number, // whole numbers, Booleans and enumerations of up to 32 bits
        Wide,   // 64 bits: a number, a handle or an address
        Real32,
        Real64,
        Text,
        Variant,
        Object, // an interface, given
        Record, // by value
        OutText,
        OutObject,
        OutVariant,
        OutOther, // a number, a record: a place to write to
    };
    Kind kind;
    std::string name;
    IID iid{};            // of an Object
    std::size_t size = 0; // of a Record, and of one behind an OutOther
};

struct Method {
    std::string name; // with its interface
    IID iid{};
    std::size_t offset = 0; // of its entry in the interface's table, in bytes
    std::vector<Parameter> parameters;
};

struct ControlClass {
    std::string name;
    CLSID id{};
    bool isControl = false; // otherwise an item
    std::wstring typeName;  // of a control, as it says itself
    std::vector<Method> methods;
};

/// Loads Morvane.dll and makes every class it has known to CoCreateInstance for this process.
class ControlLibrary {
public:
    ControlLibrary();
    ControlLibrary(const ControlLibrary&) = delete;
    ControlLibrary& operator=(const ControlLibrary&) = delete;
    /// Takes the classes back; the module stays loaded.
    ~ControlLibrary();

    const std::vector<ControlClass>& classes() const { return m_classes; }
    /// What the type library tells of the framework's objects: a window's root, the resource object, any property, any
    /// group of them. Not classes of this module.
    const ControlClass& root() const { return m_root; }
    const ControlClass& resources() const { return m_resources; }
    const ControlClass& property() const { return m_property; }
    const ControlClass& group() const { return m_group; }
    bool canUnload() const;
    HMODULE module() const { return m_module; }
    void withdrawClasses();

private:
    bool offer(ControlClass& each);

    HMODULE m_module = nullptr;
    std::vector<ControlClass> m_classes;
    ControlClass m_root;
    ControlClass m_resources;
    ControlClass m_property;
    ControlClass m_group;
    std::vector<DWORD> m_registrations;
};

} // namespace morvane::soak
