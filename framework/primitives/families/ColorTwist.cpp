// SPDX-License-Identifier: MIT
// Colour twist and gamma: argument checks and the family's entry points.
#include "framework/primitives/families/ColorTwist.h"

#include "framework/primitives/FXArgChecks.h"
#include "framework/primitives/FXRound.h"

#include <cmath>

namespace framix::prim {

template <class T, TFXLayout L>
inline constexpr auto CheckColorTwist32f = &FXCheckColorTwist<T, L>;
template <class T, TFXLayout L> inline constexpr auto CheckGammaFwd = &FXCheckPixelMap<T, L>;
template <class T, TFXLayout L> inline constexpr auto CheckGammaInv = &FXCheckPixelMap<T, L>;

FX_DEFINE_FAMILY(ColorTwist, FX_COLOR_TWIST_PRIMITIVES)

namespace {
std::array<Ipp8u, 256> MakeGammaTable(bool forward)
{
    std::array<Ipp8u, 256> table{};
    for (int i = 0; i < 256; ++i) {
        const double v = i / 255.0;
        const double out = forward ? (v < 0.018 ? 4.5 * v : 1.099 * std::pow(v, 0.45) - 0.099)
                                   : (v < 0.0812 ? v / 4.5 : std::pow((v + 0.099) / 1.099, 1 / 0.45));
        table[std::size_t(i)] = FXSaturateRound<Ipp8u>(float(out * 255.0));
    }
    return table;
}
} // namespace

const std::array<Ipp8u, 256>& FXGammaTable(bool forward)
{
    static const std::array<Ipp8u, 256> kForward = MakeGammaTable(true);
    static const std::array<Ipp8u, 256> kInverse = MakeGammaTable(false);
    return forward ? kForward : kInverse;
}

} // namespace framix::prim
