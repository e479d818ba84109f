// SPDX-License-Identifier: MIT
// Enumerations declared once with their names, so a name is never typed twice.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace framix::detail {

constexpr std::size_t FXCountEnumNames(std::string_view list)
{
    std::size_t n = 1;
    for (char c : list)
        n += c == ',';
    return n;
}

constexpr std::string_view FXTrimEnumName(std::string_view s)
{
    while (!s.empty() && (s.front() == ' ' || s.front() == '\n' || s.front() == '\t'))
        s.remove_prefix(1);
    while (!s.empty() && (s.back() == ' ' || s.back() == '\n' || s.back() == '\t'))
        s.remove_suffix(1);
    return s;
}

template <std::size_t N>
constexpr std::array<std::string_view, N> FXSplitEnumNames(std::string_view list)
{
    std::array<std::string_view, N> names{};
    std::size_t i = 0;
    while (i < N) {
        const std::size_t comma = list.find(',');
        names[i++] = FXTrimEnumName(list.substr(0, comma));
        if (comma == std::string_view::npos)
            break;
        list.remove_prefix(comma + 1);
    }
    return names;
}

} // namespace framix::detail

// Declares `enum Type : uint8_t { a, b, ... }` with ordinals 0, 1, ... and the function
// FXEnumNames(Type) that the property system finds by argument-dependent lookup.
#define FX_ENUM(Type, ...)                                                                        \
    enum Type : std::uint8_t { __VA_ARGS__ };                                                     \
    inline constexpr auto kFXEnumNames_##Type =                                                   \
        ::framix::detail::FXSplitEnumNames<::framix::detail::FXCountEnumNames(#__VA_ARGS__)>(    \
            #__VA_ARGS__);                                                                        \
    constexpr std::span<const std::string_view> FXEnumNames(Type)                                 \
    {                                                                                             \
        return kFXEnumNames_##Type;                                                               \
    }
