#include "ambrel/skin/errors.h"

namespace ambrel::skin {

std::string SkinError::text() const
{
    std::string out = file;
    if (line > 0)
        out += ':' + std::to_string(line) + ':' + std::to_string(column);
    out += ": ";
    if (!element.empty())
        out += '<' + element + '>';
    if (!element.empty() && !attribute.empty())
        out += ' ';
    if (!attribute.empty())
        out += "attribute " + attribute;
    if (!element.empty() || !attribute.empty())
        out += ": ";
    return out + message + " (error " + std::to_string(static_cast<int>(code)) + ')';
}

void failFile(Code code, std::string file, std::string message)
{
    SkinError error;
    error.code = code;
    error.file = std::move(file);
    error.message = std::move(message);
    throw SkinFailure(std::move(error));
}

} // namespace ambrel::skin
