// The regions of interest of the view.

#include "TAVIX20/display/tavix_view.h"

#include "TAVIX20/display/draw_lines.h"
#include "TAVIX20/display/roi_file.h"
#include "TAVIX20/display/tool_types.h"

#include <QBackingStore>
#include <QCoreApplication>
#include <QFile>
#include <QFileDialog>
#include <QMessageBox>
#include <QPaintEngine>
#include <QPainter>
#include <QTimerEvent>

#include <algorithm>
#include <functional>
#include <memory>
#include <new>
#include <utility>

namespace {

constexpr int STRIPE_STEP = 200; ///< Milliseconds.
constexpr const char *GUIDE_NAME = "TOOL_CROSS_LINE";
constexpr const char *OPEN_TITLE = "Open ROI File";
constexpr const char *SAVE_TITLE = "Save ROI File";
constexpr const char *FILE_FILTER = "ROI Files (*.roix)";
constexpr const char *FILE_SUFFIX = "roix";
constexpr COLORREF GUIDE_COLOUR = 0x00FF00;

/// Opens a dialog for a path, which is used when the user has chosen one. The view may be destroyed
/// meanwhile, and by the use.
void AskForPath(QWidget *view, const char *title, QFileDialog::AcceptMode mode,
                std::function<void(const QString &)> use) {
    auto *const dialog = new QFileDialog(view, title, QString(), FILE_FILTER);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setAcceptMode(mode);
    dialog->setFileMode(mode == QFileDialog::AcceptOpen ? QFileDialog::ExistingFile
                                                        : QFileDialog::AnyFile);
    dialog->setDefaultSuffix(FILE_SUFFIX);
    QObject::connect(dialog, &QFileDialog::fileSelected, view, std::move(use),
                     Qt::QueuedConnection);
    dialog->open();
}

/// Waits for nobody: the window goes on meanwhile.
void TellFailure(QWidget *view, const char *title, const QString &text) {
    auto *const box = new QMessageBox(QMessageBox::Warning, title, text, QMessageBox::Ok, view);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setModal(false); // As it is made it is modal.
    box->show();
}

/// Whether the part of the widget shows, or may show, others that are drawn over it.
bool IsCovered(const QWidget &widget, QRect part) {
    const auto reachesInto = [&part](const QObject *object) {
        const auto *const other = qobject_cast<const QWidget *>(object);
        return other && !other->isWindow() && other->isVisible() &&
               other->geometry().intersects(part);
    };
    if (std::ranges::any_of(widget.children(), reachesInto))
        return true;
    for (const QWidget *below = &widget; !below->isWindow(); below = below->parentWidget()) {
        part.translate(below->pos());
        const QObjectList &siblings = below->parentWidget()->children(); // The lowest one first.
        if (std::any_of(siblings.rbegin(), std::find(siblings.rbegin(), siblings.rend(), below),
                        reachesInto))
            return true;
    }
    return false;
}

} // namespace

void CTavixView::AddRoiStroke(std::span<const POINT> points) {
    if (m_roiMode == ROI_TOOL_MODE_NEW)
        m_rois.RemoveAll();
    const std::int32_t method =
        m_roiMode == ROI_TOOL_MODE_SUBTRACT ? _stRoiElement::SUBTRACT : _stRoiElement::ADD;
    m_rois.Add({TavixArray::CPointArray(points), method});
    RoisChanged();
}

void CTavixView::ResetRoiContext() {
    m_rois.RemoveAll();
    RoisChanged();
}

bool CTavixView::RoiFileOpen(const char *path) {
    try {
        auto elements = tavix::LoadRoiFile(path);
        if (!elements)
            return false;
        CRoiElementArray rois;
        rois.Assign(std::move(*elements));
        m_rois = std::move(rois);
    } catch (const std::bad_alloc &) {
        return false;
    }
    RoisChanged();
    return true;
}

bool CTavixView::RoiFileSave(const char *path) const {
    return tavix::SaveRoiFile(path, m_transform.ImageSize(), m_rois);
}

void CTavixView::RoisChanged() {
    UpdateStripes();
    Repaint();
    RaiseRoiStatusChanged();
}

/// The stripes lie in client coordinates and march while there are any: with every tick, and with
/// every refresh, too. Pictures that come faster than the ticks do not stop them.
void CTavixView::UpdateStripes() {
    m_stripeTimer.stop();
    m_rois.UpdateClientOutlines(m_transform);
    if (m_rois.GetCount() == 0)
        return;
    m_stripes.Advance();
    m_stripeTimer.start(STRIPE_STEP, this);
}

void CTavixView::timerEvent(QTimerEvent *event) {
    if (event->timerId() != m_stripeTimer.timerId())
        return QAbstractScrollArea::timerEvent(event);
    m_stripes.Advance();
    const QRect stripes = QRect(m_rois.ClientBounds()) & viewport()->rect();
    if (stripes.isEmpty())
        return;
    if (HasStroke() || IsCovered(*viewport(), stripes))
        return viewport()->update(stripes);
    // Whatever else is due is painted first. A paint at once is then for the stripes alone.
    QEvent update(QEvent::UpdateRequest);
    QCoreApplication::sendEvent(window(), &update);
    m_isStripeTick = true;
    viewport()->repaint(stripes);
    m_isStripeTick = false;
}

/// A tick of the stripes changes nothing but their pixels, which are drawn over those of the last
/// one. That is enough where the paint goes to the window, which still shows what was painted last.
bool CTavixView::IsStripeTick(const QPainter &painter) const {
    QBackingStore *const screen = viewport()->backingStore();
    return m_isStripeTick && screen &&
           painter.paintEngine()->paintDevice() == screen->paintDevice();
}

void CTavixView::PaintStripes(QPainter &painter, const QRect &visible) const {
    m_stripes.Draw(painter, m_rois.ClientOuterOutlines(), visible);
    m_stripes.Draw(painter, m_rois.ClientHoleOutlines(), visible);
}

void CTavixView::AskForRoiFileToOpen() {
    AskForPath(this, OPEN_TITLE, QFileDialog::AcceptOpen, [this](const QString &path) {
        if (!RoiFileOpen(QFile::encodeName(path).constData()))
            TellFailure(this, OPEN_TITLE, path + " is not a ROI file that can be read.");
    });
}

void CTavixView::AskForRoiFileToSave() {
    AskForPath(this, SAVE_TITLE, QFileDialog::AcceptSave, [this](const QString &path) {
        if (!RoiFileSave(QFile::encodeName(path).constData()))
            TellFailure(this, SAVE_TITLE, path + " could not be written.");
    });
}

void CTavixView::ShowGuideLines(CPoint imagePoint) {
    RemoveGuideLines();
    const CSize size = m_transform.ImageSize();
    const auto add = [this](CPoint from, CPoint to) {
        auto line = std::make_unique<CDrawLineObj>(from, to);
        line->SetStyle(1, PS_SOLID, GUIDE_COLOUR);
        line->SetName(GUIDE_NAME);
        m_objects.Add(std::move(line));
    };
    add({0, imagePoint.y}, {size.cx - 1, imagePoint.y});
    add({imagePoint.x, 0}, {imagePoint.x, size.cy - 1});
}

void CTavixView::RemoveGuideLines() {
    m_objects.RemoveEach(GUIDE_NAME);
}
