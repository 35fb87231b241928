// A window on the (offscreen) screen, and the pictures and events for it.
#pragma once

#include "TAVIX20/display/tavix_wnd.h"

#include "TAVIX20/image/tavix_image24.h"
#include "TAVIX20/image/tavix_image8.h"

#include <QAbstractScrollArea>
#include <QTest>
#include <QWheelEvent>

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <random>

/// Noise without pure red, so that overlay pixels are told apart.
inline CTavixImage8 Noise(int width, int height) {
    CTavixImage8 image(width, height);
    std::mt19937 random(7);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            image.SetPixel(x, y, static_cast<unsigned char>(random()));
    return image;
}

inline CTavixImage24 ColourNoise(int width, int height) {
    CTavixImage24 image(width, height);
    std::mt19937 random(11);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            image.SetPixel(x, y, random() & 0xFFFF7F);
    return image;
}

/// Class, size and all bytes.
inline bool Equal(const CTavixImage &a, const CTavixImage &b) {
    return a.GetBitCount() == b.GetBitCount() && a.GetWidth() == b.GetWidth() &&
           a.GetHeight() == b.GetHeight() &&
           std::equal(a.GetImagePtr(), a.GetImagePtr() + a.GetImageLen(), b.GetImagePtr());
}

inline QAbstractScrollArea &ViewOf(CTavixWnd &window) {
    return *window.findChild<QAbstractScrollArea *>();
}

inline QImage Grab(CTavixWnd &window) {
    return window.grab().toImage().convertToFormat(QImage::Format_RGB32);
}

inline void SendWheel(CTavixWnd &window, QPoint delta, Qt::ScrollPhase phase = Qt::NoScrollPhase) {
    QWheelEvent event(QPointF(10, 10), QPointF(10, 10), QPoint(), delta, Qt::NoButton,
                      Qt::NoModifier, phase, false);
    QCoreApplication::sendEvent(ViewOf(window).viewport(), &event);
}

class ShownWindowTest : public testing::Test {
protected:
    void Show(int width, int height) {
        window.resize(width, height);
        window.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    }

    CTavixWnd window;
};
