// describe FILE: what Morvane.dll, loaded as an application loads it, says of every built class: interface, property
// table, answers to notifications. Writes it as JSON.
#include "ambrel/ambrel.h"
#include "gallery/component_library.h"
#include "tools/describe/control_reader.h"
#include "tools/describe/library_reader.h"

#include <cstdio>
#include <fstream>
#include <stdexcept>

namespace describe {

namespace {

/// COM and the runtime's classes for the length of the program.
class Session {
public:
    Session()
    {
        if (FAILED(OleInitialize(nullptr)) || FAILED(AmbrelRegisterClasses()))
            throw std::runtime_error("the runtime could not be started");
    }
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;
    ~Session()
    {
        AmbrelUnregisterClasses();
        OleUninitialize();
    }
};

/// The classes that are built; the library lists planned ones too.
std::vector<ClassEntry> builtClasses(ITypeLib& library)
{
    const gallery::ComponentLibrary loaded({});
    const auto classObject = reinterpret_cast<LPFNGETCLASSOBJECT>(
        reinterpret_cast<void*>(GetProcAddress(loaded.module(), "DllGetClassObject")));
    if (!classObject)
        throw std::runtime_error("Morvane.dll has no class objects");
    std::vector<ClassEntry> built = classesOf(library);
    std::erase_if(built, [&](const ClassEntry& entry) {
        ComPtr<IUnknown> factory;
        return FAILED(classObject(entry.id, IID_IClassFactory, factory.putVoid()));
    });
    return built;
}

void writeClass(JsonWriter& json, const ClassEntry& entry, Workshop& workshop)
{
    json.key(entry.name).beginObject();
    json.key("classId").value(guidText(entry.id));
    json.key("interface");
    writeInterface(json, *entry.defaultInterface);
    if (entry.events)
        json.key("events").value(nameOf(*entry.events));
    if (Workshop::isControl(entry.id)) {
        json.key("control");
        workshop.writeControl(json, entry.id);
    }
    json.endObject();
}

std::string description()
{
    const Session session;
    ComPtr<ITypeLib> library;
    if (FAILED(LoadTypeLibEx(L"Morvane.dll", REGKIND_NONE, library.put())))
        throw std::runtime_error("Morvane.dll has no type library");
    const auto classes = builtClasses(*library);
    std::vector<CLSID> identifiers;
    for (const ClassEntry& entry : classes)
        identifiers.push_back(entry.id);
    const gallery::ComponentLibrary components(identifiers);
    Workshop workshop;

    JsonWriter json;
    json.beginObject();
    json.key("classes").beginObject();
    for (const ClassEntry& entry : classes)
        writeClass(json, entry, workshop);
    json.endObject();
    json.key("enumerations");
    writeEnumerations(json, *library);
    json.endObject();
    return json.text();
}

} // namespace

} // namespace describe

int main(int count, char** arguments)
{
    if (count != 2) {
        std::fprintf(stderr, "usage: describe FILE\n");
        return 2;
    }
    try {
        std::ofstream file(arguments[1], std::ios::binary);
        file << describe::description() << '\n';
        file.flush();
        if (!file)
            throw std::runtime_error("the file could not be written");
        return 0;
    } catch (const std::exception& problem) {
        std::fprintf(stderr, "describe: %s\n", problem.what());
        return 1;
    }
}
