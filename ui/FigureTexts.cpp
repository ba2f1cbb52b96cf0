#include "ui/FigureTexts.h"

#include <algorithm>
#include <cmath>

#include "core/Text.h"
#include "core/Texts.h"

namespace ui {
namespace {

constexpr double kLongest = 360'000; ///< seconds: what claims to be longer is damaged or a guess

} // namespace

std::string twoDigits(long long number) {
    return (number < 10 ? "0" : "") + std::to_string(number);
}

std::u16string lengthText(double seconds) {
    if (!(seconds >= 0) || seconds > kLongest) {
        return {};
    }
    const long long hundredths = std::llround(seconds * 100);
    return core::displayText(std::to_string(hundredths / 6000) + ":" +
                             twoDigits(hundredths / 100 % 60) + "." + twoDigits(hundredths % 100));
}

std::u16string minutesText(double seconds) {
    if (!(seconds >= 0) || seconds >= kLongest) {
        return {};
    }
    const long long whole = std::llround(seconds);
    return core::displayText(std::to_string(whole / 60) + ":" + twoDigits(whole % 60));
}

std::u16string sizeText(platform::Size size) {
    return core::displayText(std::to_string(size.width)) + u" × " +
           core::displayText(std::to_string(size.height));
}

std::u16string bytesText(std::uint64_t bytes) {
    constexpr std::uint64_t kKilo = 1000;
    const std::uint64_t kilobytes = (bytes + kKilo / 2) / kKilo;
    if (kilobytes < kKilo) {
        return core::tr("Bytes.Kilo|{0} KB"_tr, std::max<std::uint64_t>(kilobytes, 1));
    }
    const bool isGiga = bytes >= kKilo * kKilo * kKilo;
    const std::uint64_t tenth = kKilo * kKilo / 10 * (isGiga ? kKilo : 1);
    const std::uint64_t shown = (bytes + tenth / 2) / tenth;
    const std::u16string number = core::tr("Number.Decimal|{0}.{1}"_tr, shown / 10, shown % 10);
    return core::tr(isGiga ? "Bytes.Giga|{0} GB"_tr : "Bytes.Mega|{0} MB"_tr, number);
}

std::u16string percentText(int percent) {
    return core::tr("Percent|{0} %"_tr, percent);
}

} // namespace ui
