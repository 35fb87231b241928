// The processing commands: operations of CTavixImage on the image shown.

#include "TAVIX20/display/tavix_view.h"
#include "TAVIX20/display/tavix_wnd.h"

void CTavixWnd::Light(long brightness, long contrast) {
    m_view->Process([=](CTavixImage &image) { image.Light(brightness, contrast); });
}

void CTavixWnd::Gamma(double gamma) {
    m_view->Process([=](CTavixImage &image) { image.Gamma(gamma); });
}

// What is uncovered becomes 0 whatever the fill says.
void CTavixWnd::Rotate(double angle) {
    m_view->Process([=](CTavixImage &image) { image.Rotate(angle, 0); });
}

void CTavixWnd::CannyEdge() {
    m_view->CannyEdge();
}

void CTavixWnd::Invert() {
    m_view->Process(&CTavixImage::Invert);
}

void CTavixWnd::AutoContrast() {
    m_view->Process(&CTavixImage::AutoContrast);
}

void CTavixWnd::HistoEqualize() {
    m_view->Process(&CTavixImage::HistoEqualize);
}

void CTavixWnd::HistoNormalize() {
    m_view->Process(&CTavixImage::HistoNormalize);
}

void CTavixWnd::HistoRoot() {
    m_view->Process(&CTavixImage::HistoRoot);
}

void CTavixWnd::HistoLog() {
    m_view->Process(&CTavixImage::HistoLog);
}

void CTavixWnd::HistoStretch() {
    m_view->Process(&CTavixImage::HistoStretch);
}

void CTavixWnd::Erode() {
    m_view->Process(&CTavixImage::Erode);
}

void CTavixWnd::Dilate() {
    m_view->Process(&CTavixImage::Dilate);
}

void CTavixWnd::OpenBox() {
    m_view->Process(&CTavixImage::OpenBox);
}

void CTavixWnd::CloseBox() {
    m_view->Process(&CTavixImage::CloseBox);
}

void CTavixWnd::Sharpen() {
    m_view->Process(&CTavixImage::Sharpen);
}

void CTavixWnd::Blur() {
    m_view->Process(&CTavixImage::Blur);
}

void CTavixWnd::Median() {
    m_view->Process(&CTavixImage::Median);
}

void CTavixWnd::Gaussian3x3() {
    m_view->Process(&CTavixImage::Gaussian3x3);
}

void CTavixWnd::Gaussian5x5() {
    m_view->Process(&CTavixImage::Gaussian5x5);
}

void CTavixWnd::Emboss() {
    m_view->Process(&CTavixImage::Emboss);
}

void CTavixWnd::Laplacian() {
    m_view->Process(&CTavixImage::Laplacian);
}

void CTavixWnd::Rotate90L() {
    m_view->Process(&CTavixImage::Rotate90L);
}

void CTavixWnd::Rotate90R() {
    m_view->Process(&CTavixImage::Rotate90R);
}

void CTavixWnd::Rotate180() {
    m_view->Process(&CTavixImage::Rotate180);
}

void CTavixWnd::RotateHorzFlip() {
    m_view->Process(&CTavixImage::RotateHorzFlip);
}

void CTavixWnd::RotateVertFlip() {
    m_view->Process(&CTavixImage::RotateVertFlip);
}
