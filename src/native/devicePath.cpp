#include "native/devicePath.h"

#include <algorithm>
#include <iterator>

#include "platform/processApi.h"

namespace {

WideChar ToUpper(WideChar unit) {
    return unit >= 'a' && unit <= 'z' ? static_cast<WideChar>(unit - 'a' + 'A') : unit;
}

// Returns whether the shorter text is a prefix of the other, without regard to the case of ASCII letters.
bool ShorterIsPrefix(const std::basic_string<WideChar>& left, const std::basic_string<WideChar>& right) {
    const size_t length = std::min(left.size(), right.size());
    return std::equal(left.begin(), left.begin() + static_cast<std::ptrdiff_t>(length), right.begin(),
                      [](WideChar a, WideChar b) { return ToUpper(a) == ToUpper(b); });
}

} // namespace

std::basic_string<WideChar> DevicePathToDosPath(const std::basic_string<WideChar>& path) {
    if (path.empty()) {
        return {};
    }
    for (char letter = 'A'; letter <= 'Z'; ++letter) {
        const WideChar drive[] = {static_cast<WideChar>(letter), static_cast<WideChar>(':'), WideChar{}};
        WideChar names[64] = {};
        if (platform::QueryDosDeviceW(drive, names, std::size(names)) == 0) {
            continue;
        }
        const std::basic_string<WideChar> device(names, std::find(std::begin(names), std::end(names), WideChar{}));
        if (!device.empty() && ShorterIsPrefix(device, path)) {
            return drive + path.substr(device.size());
        }
    }
    return {};
}
