#include "tools/Printable.h"

std::string Printable(std::string_view text)
{
    std::string shown;
    shown.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        auto const byte = static_cast<unsigned char>(text[i]);
        auto const next = i + 1 < text.size() ? static_cast<unsigned char>(text[i + 1]) : 0U;
        if (byte == 0xC2U && next >= 0x80U && next < 0xA0U) {
            // The second set of control characters, U+0080 to U+009F.
            shown += '?';
            ++i;
        } else {
            shown += byte < 0x20U || byte == 0x7FU ? '?' : text[i];
        }
    }
    return shown;
}
