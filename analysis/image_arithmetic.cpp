// Image arithmetic by OpenCV's own kernels, on the buffers themselves. The left operand takes the
// result.

#include "TAVIX20/image/ipl_bridge.h"
#include "TAVIX20/image/tavix_image24.h"
#include "TAVIX20/image/tavix_image8.h"

#include <opencv2/core/core_c.h>

namespace {

/// Runs call(left, right, result) when both images have the same size; the result is the left
/// image.
template <typename Image, typename Call>
Image &Combine(Image &left, const Image &right, Call call) {
    if (left.GetWidth() == right.GetWidth() && left.GetHeight() == right.GetHeight())
        tavix::CallBridged(right, left, [call](IplImage *other, IplImage *result) {
            call(result, other, result);
        });
    return left;
}

constexpr auto ADD = [](auto *a, auto *b, auto *result) { cvAdd(a, b, result); };
constexpr auto SUBTRACT = [](auto *a, auto *b, auto *result) { cvSub(a, b, result); };
constexpr auto MULTIPLY = [](auto *a, auto *b, auto *result) { cvMul(a, b, result); };
constexpr auto DIVIDE = [](auto *a, auto *b, auto *result) { cvDiv(a, b, result); };
constexpr auto AND = [](auto *a, auto *b, auto *result) { cvAnd(a, b, result); };
constexpr auto OR = [](auto *a, auto *b, auto *result) { cvOr(a, b, result); };

} // namespace

CTavixImage8 &CTavixImage8::operator+(const CTavixImage8 &other) {
    return Combine(*this, other, ADD);
}

CTavixImage8 &CTavixImage8::operator-(const CTavixImage8 &other) {
    return Combine(*this, other, SUBTRACT);
}

CTavixImage8 &CTavixImage8::operator*(const CTavixImage8 &other) {
    return Combine(*this, other, MULTIPLY);
}

CTavixImage8 &CTavixImage8::operator/(const CTavixImage8 &other) {
    return Combine(*this, other, DIVIDE);
}

CTavixImage8 &CTavixImage8::operator&(const CTavixImage8 &other) {
    return Combine(*this, other, AND);
}

CTavixImage8 &CTavixImage8::operator|(const CTavixImage8 &other) {
    return Combine(*this, other, OR);
}

CTavixImage24 &CTavixImage24::operator+(const CTavixImage24 &other) {
    return Combine(*this, other, ADD);
}

CTavixImage24 &CTavixImage24::operator-(const CTavixImage24 &other) {
    return Combine(*this, other, SUBTRACT);
}

CTavixImage24 &CTavixImage24::operator*(const CTavixImage24 &other) {
    return Combine(*this, other, MULTIPLY);
}

CTavixImage24 &CTavixImage24::operator/(const CTavixImage24 &other) {
    return Combine(*this, other, DIVIDE);
}

CTavixImage24 &CTavixImage24::operator&(const CTavixImage24 &other) {
    return Combine(*this, other, AND);
}

CTavixImage24 &CTavixImage24::operator|(const CTavixImage24 &other) {
    return Combine(*this, other, OR);
}
