// SPDX-License-Identifier: MIT
// Image adjust: the shortcut, rounding and wrap, the colour-space stage, the state pins.
#include <gtest/gtest.h>

#include <atomic>
#include <cmath>
#include <random>
#include <thread>

#include "filters/colour/FXImageAdjust.h"
#include "framework/primitives/dispatch/FXPrimitiveLayer.h"
#include "framework/primitives/dispatch/Fxdispatcher.h"
#include "tests/filters/colour/ColourTestSupport.h"

namespace framix {
namespace {

using test::FXAlphaOf;
using test::FXBytesOf;
using test::FXFrameOf;
using test::TBytes;
using test::TColourRig;

struct TSettings {
    float Brightness = 0, Contrast = 1, Saturation = 1, Hue = 0, Lightness = 1;
};

void Apply(TFXImageAdjust& adjust, const TSettings& s)
{
    adjust.SetBrightness(s.Brightness);
    adjust.SetContrast(s.Contrast);
    adjust.SetSaturation(s.Saturation);
    adjust.SetHue(s.Hue);
    adjust.SetLightness(s.Lightness);
}

// Rounded to nearest (halves to even), capped at 255, low eight bits below 0.
std::uint8_t Wrap(double v)
{
    const long long r = std::llrint(v);
    return r > 255 ? 255 : std::uint8_t(r & 0xFF);
}

// The adjustment written out pixel by pixel, with one-pixel conversions: the definition the
// component's row-wise conversion must reproduce. Changes `in` as the component does.
TBytes Reference(TBytes& in, int step, const TSettings& s)
{
    FXStartPrimitiveLayer();
    TBytes out = in;
    const bool colour = !(s.Saturation == 1.0f && s.Hue == 0.0f && s.Lightness == 1.0f);
    if (!colour && s.Contrast == 1.0f)
        return out;
    const double b = std::nearbyint(double(s.Brightness) * 255.0);
    for (std::size_t p = 0; p + 3 <= in.size(); p += std::size_t(step)) {
        if (colour) {
            Ipp8u h, l, sat;
            Ipp8u* planes[3] = {&h, &l, &sat};
            ipp::ippiBGRToHLS_8u_C3P3R(&in[p], 3, planes, 1, {1, 1});
            h = Wrap(h * double(s.Hue));
            l = Wrap(l * double(s.Lightness));
            sat = Wrap(sat * double(s.Saturation));
            const Ipp8u* back[3] = {&h, &l, &sat};
            ipp::ippiHLSToBGR_8u_P3C3R(back, 1, &in[p], 3, {1, 1});
        }
        for (std::size_t c = 0; c < 3; ++c)
            out[p + c] = Wrap(in[p + c] * double(s.Contrast) + b);
    }
    return out;
}

TEST(FXImageAdjust, NeutralColourAndContrastPassTheFrameDroppingBrightness_Intentional)
{
    TColourRig<TFXImageAdjust> rig;
    const FXImageBufferPtr frame = FXFrameOf(2, 1, vfRGB24, {0, 100, 200, 5, 6, 7});
    EXPECT_EQ(rig.Run(frame)->GetReadPointer(), frame->GetReadPointer()); // not even copied
    rig.Filter.SetBrightness(0.5f);
    EXPECT_EQ(FXBytesOf(*rig.Run(frame)), (TBytes{0, 100, 200, 5, 6, 7}));
}

TEST(FXImageAdjust, ContrastAndBrightnessRoundHalfToEvenCapAndWrap_Intentional)
{
    TColourRig<TFXImageAdjust> rig;
    rig.Filter.SetBrightness(0.5f); // Round(127.5) = 128
    rig.Filter.SetContrast(0.999f);
    EXPECT_EQ(rig.Run(2, 1, vfRGB24, {0, 100, 200, 127, 128, 255}),
              (TBytes{128, 228, 255, 255, 255, 255}));
    // Below 0 the low eight bits remain: 50 * 0.999 - 128 = -78.05 -> 178.
    rig.Filter.SetBrightness(-0.5f);
    EXPECT_EQ(rig.Run(1, 1, vfRGB24, {50, 0, 128}), (TBytes{178, 128, 0}));
    rig.Filter.SetBrightness(0.0f);
    rig.Filter.SetContrast(-1.0f);
    EXPECT_EQ(rig.Run(1, 1, vfRGB32, {10, 0, 255, 99}), (TBytes{246, 0, 1, 99}));
}

TEST(FXImageAdjust, DefaultHueTurnsColouredPixelsRedAndChangesTheInputFrame_Intentional)
{
    TColourRig<TFXImageAdjust> rig;
    rig.Filter.SetSaturation(1.0001f);
    // Pure green, pure blue and a grey, B G R A.
    const FXImageBufferPtr frame =
        FXFrameOf(3, 1, vfRGB32, {0, 255, 0, 11, 255, 0, 0, 22, 90, 90, 90, 33});
    const TBytes out = FXBytesOf(*rig.Run(frame));
    for (std::size_t p : {0u, 4u}) { // both coloured pixels are red (within the round trip)
        EXPECT_EQ(out[p + 2], 255);
        EXPECT_LE(out[p], 1);
        EXPECT_EQ(out[p], out[p + 1]);
    }
    EXPECT_EQ(TBytes(out.begin() + 8, out.end()), (TBytes{90, 90, 90, 33}));
    EXPECT_EQ(FXAlphaOf(out), (TBytes{11, 22, 33}));
    // The sender's own frame now holds the colour-space result (contrast 1: the same bytes).
    EXPECT_EQ(FXBytesOf(*frame), out);
}

TEST(FXImageAdjust, RowConversionEqualsThePixelByPixelDefinition)
{
    const TSettings cases[] = {
        {0.1f, 1.3f, 1.5f, 1.0f, 0.8f}, {-0.3f, 0.7f, 0.5f, 0.0f, 1.0f},
        {0.0f, 1.0f, 1.0f, 2.5f, 1.0f}, {0.5f, -1.2f, 1.0f, -0.7f, 1.25f},
        {0.0f, 1.0f, 0.0f, 1.0f, 3.0f}, {0.25f, 2.0f, 1.0f, 0.0f, 1.0f},
    };
    std::uint32_t seed = 1;
    for (const TSettings& s : cases)
        for (TFXVideoFormat format : {vfRGB24, vfRGB32}) {
            const int step = format == vfRGB32 ? 4 : 3, width = 37, height = 5;
            TBytes bytes(std::size_t(width * height * step));
            std::mt19937 random(seed++);
            for (auto& b : bytes)
                b = std::uint8_t(random());
            TColourRig<TFXImageAdjust> rig;
            Apply(rig.Filter, s);
            const FXImageBufferPtr frame = FXFrameOf(width, height, format, bytes, 7);
            const TBytes out = FXBytesOf(*rig.Run(frame));
            TBytes changed = bytes;
            const TBytes expected = Reference(changed, step, s);
            EXPECT_EQ(out, expected) << "case " << &s - cases << " " << FXVideoFormatName(format);
            EXPECT_EQ(FXBytesOf(*frame), changed);
            EXPECT_TRUE(test::FXPaddingIntact(*frame));
            if (format == vfRGB32)
                EXPECT_EQ(FXAlphaOf(out), FXAlphaOf(bytes));
        }
}

// A component with a float output, standing for a slider that drives the pins.
class TFXTestSlider : public TKTComponent {
public:
    explicit TFXTestSlider(TKTComponent* owner)
        : TKTComponent(owner), Output(*this, "OutputPin", Lock())
    {
    }
    TPXFloatSourcePin Output;
};

TEST(FXImageAdjust, StatePinsDriveTheSettingsAndShowThem)
{
    TColourRig<TFXImageAdjust> rig;
    auto* slider = new TFXTestSlider(&rig.Harness().Graph());
    TFXImageAdjust& adjust = rig.Filter;
    EXPECT_EQ(adjust.GetContrastPin().GetValue(), 1.0f); // the defaults show from the start
    EXPECT_EQ(adjust.GetSaturationPin().GetValue(), 1.0f);

    adjust.GetBrightnessPin().SetSourcePin(&slider->Output);
    EXPECT_TRUE(slider->Output.SendValue(0.1f));
    EXPECT_EQ(adjust.GetBrightness(), 0.1f);
    EXPECT_EQ(adjust.GetBrightnessPin().GetValue(), 0.1f);
    adjust.SetContrast(2.0f);
    EXPECT_EQ(adjust.GetContrastPin().GetValue(), 2.0f);
    // The driven setting acts on the next frame: 100 * 2 + Round(25.5) = 226.
    EXPECT_EQ(rig.Run(1, 1, vfRGB24, {100, 10, 0}), (TBytes{226, 46, 26}));

    // Each pin drives its own setting only.
    adjust.GetBrightnessPin().SetSourcePin(nullptr);
    for (TPXFloatStatePin* pin : {&adjust.GetContrastPin(), &adjust.GetSaturationPin(),
                                  &adjust.GetHuePin(), &adjust.GetLightnessPin()}) {
        pin->SetSourcePin(&slider->Output);
        slider->Output.SendValue(0.75f);
        pin->SetSourcePin(nullptr);
    }
    EXPECT_EQ(adjust.GetBrightness(), 0.1f);
    EXPECT_EQ(adjust.GetContrast(), 0.75f);
    EXPECT_EQ(adjust.GetSaturation(), 0.75f);
    EXPECT_EQ(adjust.GetHue(), 0.75f);
    EXPECT_EQ(adjust.GetLightness(), 0.75f);
}

TEST(FXImageAdjust, PinsMovedFromAnotherThreadWhileFramesFlow_Concurrency)
{
    TColourRig<TFXImageAdjust> rig;
    auto* slider = new TFXTestSlider(&rig.Harness().Graph());
    TFXImageAdjust& adjust = rig.Filter;
    adjust.GetThreading().SetEnabled(true);
    adjust.GetSaturationPin().SetSourcePin(&slider->Output);
    adjust.SetContrast(1.5f);
    rig.Harness().Source().Announce(16, 8, vfRGB32);

    std::atomic<bool> done{false};
    std::thread mover([&] {
        for (int i = 0; !done.load(); ++i)
            slider->Output.SendValue(0.5f + float(i % 100) / 100.0f);
        slider->Output.SendValue(0.25f);
    });
    for (int i = 0; i < 200; ++i)
        rig.Harness().Source().Send(test::FXRandomFrame(16, 8, vfRGB32, std::uint32_t(i + 1)));
    done = true;
    mover.join();
    adjust.WaitIdle();
    EXPECT_EQ(adjust.GetSaturation(), 0.25f);
    EXPECT_EQ(adjust.GetSaturationPin().GetValue(), 0.25f);
    std::lock_guard lock(rig.Harness().Captured.Mutex);
    EXPECT_EQ(rig.Harness().Captured.Frames.size(), 200u);
}

} // namespace
} // namespace framix
