// Names inside packages and the set of files they name.
#include "ambrel/skin/container.h"
#include "ambrel/skin/limits.h"
#include "ambrel/skin/text.h"

#include <algorithm>
#include <array>

namespace ambrel::skin {

namespace {

constexpr std::array kDevices = {"con", "prn", "aux", "nul", "conin$", "conout$", "clock$"};

// The raised digits 1 to 3 count as digits here.
bool isNumberedDevice(std::string_view stem)
{
    if (!stem.starts_with("com") && !stem.starts_with("lpt"))
        return false;
    const std::string_view number = stem.substr(3);
    return (number.size() == 1 && number[0] >= '0' && number[0] <= '9') || number == "\xC2\xB9" ||
           number == "\xC2\xB2" || number == "\xC2\xB3";
}

// Windows reads "nul" and "NUL.png" alike as the device, whatever folder they are in.
bool isDevice(std::string_view component)
{
    std::string stem = lowered(component.substr(0, component.find('.')));
    while (!stem.empty() && stem.back() == ' ')
        stem.pop_back();
    return isNumberedDevice(stem) || std::find(kDevices.begin(), kDevices.end(), stem) != kDevices.end();
}

const char* faultOfComponent(std::string_view component)
{
    if (component.empty())
        return "has an empty part";
    if (component == "." || component == "..")
        return "leads out of the package";
    if (component.back() == '.' || component.back() == ' ')
        return "has a part that ends with a dot or a space";
    if (isDevice(component))
        return "is the name of a device";
    return nullptr;
}

const char* faultOfCharacters(std::string_view name)
{
    if (name.empty() || name.size() > kFileNameBytes)
        return "is empty or too long";
    if (!isUtf8(name))
        return "is not UTF-8";
    const auto forbidden = [](char c) {
        return static_cast<unsigned char>(c) < 0x20 || c == 0x7F ||
               std::string_view("\\:*?\"<>|").find(c) != std::string_view::npos;
    };
    return std::any_of(name.begin(), name.end(), forbidden) ? "has a character that file names cannot hold" : nullptr;
}

const char* faultOf(std::string_view name)
{
    if (const char* fault = faultOfCharacters(name))
        return fault;
    std::size_t depth = 1;
    for (std::size_t begin = 0;; ++depth) {
        const std::size_t end = name.find('/', begin);
        if (const char* fault = faultOfComponent(name.substr(begin, end - begin)))
            return fault;
        if (end == std::string_view::npos)
            break;
        begin = end + 1;
    }
    return depth > kFolderDepth ? "lies too deep" : nullptr;
}

} // namespace

bool NameLess::operator()(std::string_view a, std::string_view b) const
{
    return std::lexicographical_compare(a.begin(), a.end(), b.begin(), b.end(),
                                        [](char x, char y) { return loweredChar(x) < loweredChar(y); });
}

void checkFileName(std::string_view name)
{
    if (const char* fault = faultOf(name))
        failFile(Code::BadFileName, printable(name), std::string("the file name ") + fault);
}

const Bytes* PackageFiles::find(std::string_view name) const
{
    const auto it = m_files.find(name);
    return it == m_files.end() ? nullptr : &it->second;
}

std::string_view PackageFiles::spellingOf(std::string_view name) const
{
    const auto it = m_files.find(name);
    return it == m_files.end() ? std::string_view() : std::string_view(it->first);
}

void PackageFiles::add(std::string name, Bytes bytes)
{
    checkFileName(name);
    if (m_files.contains(name))
        failFile(Code::DuplicateFile, name, "the package has two files of this name");
    if (m_files.size() >= kFilesOfPackage)
        failFile(Code::TooManyFiles, name, "the package has more than " + std::to_string(kFilesOfPackage) + " files");
    if (bytes.size() > kFileBytes)
        failFile(Code::FileTooLarge, name, "the file has more than " + std::to_string(kFileBytes) + " bytes");
    if (bytes.size() > kPackageBytes - m_total)
        failFile(Code::PackageTooLarge, name, "the package has more than " + std::to_string(kPackageBytes) + " bytes");
    m_total += bytes.size();
    m_files.emplace(std::move(name), std::move(bytes));
}

void PackageFiles::remove(std::string_view name)
{
    if (const auto it = m_files.find(name); it != m_files.end()) {
        m_total -= it->second.size();
        m_files.erase(it);
    }
}

} // namespace ambrel::skin
