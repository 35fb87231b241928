#include "TAVIX20/display/draw_obj_array.h"

#include "TAVIX20/display/selection.h"
#include "TAVIX20/display/view_transform.h"
#include "TAVIX20/platform/dc.h"

#include <QImage>
#include <QPainter>

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace {

/// An object of any size and margin that writes down that it was drawn.
class Box : public CDrawObj {
public:
    Box(const CRect &box, int boxMargin, std::vector<const CDrawObj *> &drawings)
        : CDrawObj(box.TopLeft()), bounds(box), margin(boxMargin), drawn(drawings) {}
    void Draw(tavix::ObjectCanvas &) const override { drawn.push_back(this); }
    CRect GetBoundRect() const override { return bounds; }
    int GetDrawMargin() const override { return margin; }
    void MoveTo(const tagPOINT &point) override {
        bounds.MoveToXY(point.x, point.y);
        Changed();
    }

    CRect bounds;
    int margin;
    std::vector<const CDrawObj *> &drawn;
};

/// The base class as it is.
class Plain : public tavix::Cloneable<Plain> {
public:
    explicit Plain(const CPoint &anchor = {}) : Cloneable(anchor) {}
};

class DrawObjArrayTest : public testing::Test {
protected:
    int Below(int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); }
    CRect RandomBox(int range) {
        const CPoint corner(Below(range) - range / 4, Below(range) - range / 4);
        const int size = Below(50) == 0 ? range : 30;
        return {corner.x, corner.y, corner.x + Below(size), corner.y + Below(size)};
    }
    Box *AddBox(int range) {
        const int margin = Below(40) == 0 ? 200 : Below(4);
        return static_cast<Box *>(
            objects.Add(std::make_unique<Box>(RandomBox(range), margin, drawn)));
    }

    std::mt19937 random{11};
    std::vector<const CDrawObj *> drawn;
    CDrawObjArray objects;
};

} // namespace

TEST_F(DrawObjArrayTest, BaseBehaviour) {
    Plain object(CPoint(50, 60));
    EXPECT_EQ(object.GetHandleCount(), 1);
    EXPECT_EQ(object.GetHandle(1), CPoint(50, 60));
    EXPECT_EQ(object.GetHandle(2), CPoint(-1, -1));
    EXPECT_EQ(object.GetBoundRect(), CRect(50, 60, 50, 60));
    EXPECT_TRUE(object.HitTest(CPoint(38, 72)));
    EXPECT_FALSE(object.HitTest(CPoint(37, 60)));
    EXPECT_EQ(object.HitTest(62, 48), 1);
    EXPECT_EQ(object.HitTest(62, 47), 0);
    EXPECT_TRUE(object.GetObjectString().IsEmpty());
    EXPECT_EQ(object.GetColor(), 0x00FF00U);
    EXPECT_STREQ(object.GetFontFace(), "Verdana");
    EXPECT_EQ(object.GetFontSize(), 10);
    object.SetName(std::string(64, 'n').c_str());
    EXPECT_EQ(std::string(object.GetName()), std::string(63, 'n'));
    object.SetName(object.GetName() + 60);
    EXPECT_STREQ(object.Clone()->GetName(), "nnn");
}

// Against a plain list: names, indices and order stay right whatever happens.
TEST_F(DrawObjArrayTest, IndicesAndNamesAgainstAPlainList) {
    std::vector<std::pair<std::string, CDrawObj *>> model;
    const auto eraseFirst = [&](const std::string &name) {
        const auto found = std::find_if(model.begin(), model.end(),
                                        [&](const auto &entry) { return entry.first == name; });
        const int present = found != model.end();
        if (present)
            model.erase(found);
        return present;
    };
    for (int step = 0; step < 6000; ++step) {
        const std::string name = std::to_string(Below(40));
        const bool growing = step / 1000 % 2 == 0;
        const int action = Below(growing ? 20 : 8);
        if (action < 3) {
            const int index = Below(400) - 10;
            const bool valid = index >= 0 && index < static_cast<int>(model.size());
            EXPECT_EQ(objects.RemoveAt(index), valid);
            if (valid)
                model.erase(model.begin() + index);
        } else if (action < 5) {
            EXPECT_EQ(objects.RemoveFirst(name.c_str()), eraseFirst(name));
        } else if (action == 5) {
            int count = 0;
            while (eraseFirst(name))
                ++count;
            EXPECT_EQ(objects.RemoveEach(name.c_str()), count);
        } else if (action == 6 && !model.empty()) {
            auto &entry = model[static_cast<std::size_t>(Below(static_cast<int>(model.size())))];
            entry.first = name;
            entry.second->SetName(name.c_str());
        } else {
            auto object = std::make_unique<Plain>(CPoint(step, 0));
            object->SetName(name.c_str());
            model.emplace_back(name, objects.Add(std::move(object)));
        }
        ASSERT_EQ(objects.GetCount(), static_cast<int>(model.size()));
        const auto first = std::find_if(model.begin(), model.end(),
                                        [&](const auto &entry) { return entry.first == name; });
        ASSERT_EQ(objects.Find(name.c_str()), first == model.end() ? nullptr : first->second);
        const int index = Below(400);
        ASSERT_EQ(objects.GetAt(index), index < static_cast<int>(model.size())
                                            ? model[static_cast<std::size_t>(index)].second
                                            : nullptr);
    }
}

// Against a look at every object: all that touch the part are drawn, in insertion order, and of
// those that have not moved none that lies clearly elsewhere.
TEST_F(DrawObjArrayTest, DrawsWhatTouchesThePart) {
    QImage screen(400, 300, QImage::Format_RGB32);
    QPainter painter(&screen);
    CDC dc(&painter);
    tavix::ViewTransform view;
    view.SetImageSize({2000, 2000});
    view.SetClientSize({400, 300});
    std::vector<Box *> boxes;
    for (int round = 0; round < 60; ++round) {
        for (int i = Below(200); i > 0; --i)
            boxes.push_back(AddBox(2000));
        for (int i = Below(60); i > 0; --i)
            boxes[static_cast<std::size_t>(Below(static_cast<int>(boxes.size())))]->MoveTo(
                {Below(2000), Below(2000)});
        for (int i = Below(60); i > 0 && !boxes.empty(); --i) {
            const int index = Below(static_cast<int>(boxes.size()));
            objects.RemoveAt(index);
            boxes.erase(boxes.begin() + index);
        }
        view.SetZoom(0.1 + Below(40) / 10.0);
        view.SetScroll({Below(4000), Below(4000)});
        const CRect part(CPoint(Below(300), Below(200)), CSize(1 + Below(100), 1 + Below(100)));
        drawn.clear();
        objects.Draw(dc, view, part);

        std::size_t next = 0;
        int elsewhere = 0;
        for (const Box *box : boxes) {
            CRect block = view.PaintedRect(
                {box->bounds.left, box->bounds.top, box->bounds.right + 1, box->bounds.bottom + 1});
            block.InflateRect(box->margin, box->margin);
            const bool isDrawn = next < drawn.size() && drawn[next] == box;
            next += isDrawn;
            CRect common;
            EXPECT_TRUE(isDrawn || !common.IntersectRect(block, part));
            block.InflateRect(4, 4);
            elsewhere += isDrawn && !common.IntersectRect(block, part);
        }
        EXPECT_EQ(next, drawn.size());
        EXPECT_LE(elsewhere, 60); // Moved away since the index was built.
    }
}

TEST_F(DrawObjArrayTest, TheSelectionEndsWithItsObject) {
    int changes = 0;
    objects.SetChangeListener([&changes] { ++changes; });
    for (int i = 0; i < 3; ++i)
        AddBox(100);
    CDrawObj *const middle = objects.GetAt(1);
    tavix::Selection::Select(objects, *middle);
    objects.RemoveAt(0);
    EXPECT_EQ(tavix::Selection::Object(), middle);
    EXPECT_EQ(changes, 5);
    objects.RemoveAt(0);
    EXPECT_EQ(tavix::Selection::Object(), nullptr);
    {
        CDrawObjArray other;
        tavix::Selection::Select(other, *other.Add(std::make_unique<Plain>()));
        objects.RemoveAll();
        EXPECT_EQ(tavix::Selection::Array(), &other);
    }
    EXPECT_EQ(tavix::Selection::Array(), nullptr);
}
