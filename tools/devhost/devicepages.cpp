#include "devicepages.h"

#include "collectview.h"
#include "hostdevice.h"

#include <QLabel>
#include <QScrollArea>
#include <QTimer>

using namespace HostContract;

namespace {

constexpr int hiddenMs = 1000; // between two reports of a view that is not shown

} // namespace

DevicePages::DevicePages(int language, QWidget *parent)
    : QStackedWidget(parent)
    , m_language(language)
{
}

DevicePages::~DevicePages()
{
    for (Page &page : m_devicePages)
        giveUp(page);
}

void DevicePages::add(HostDevice *device)
{
    Page page;
    page.device = device;
    m_devicePages << page;
    // A view takes a while to make: the window comes first.
    QTimer::singleShot(0, this, &DevicePages::makeNext);
}

void DevicePages::remove(HostDevice *device)
{
    Page *page = pageOf(device);
    giveUp(*page);
    delete page->widget;
    m_devicePages.removeAt(int(page - m_devicePages.data()));
}

CollectView *DevicePages::view(HostDevice *device)
{
    Page *page = pageOf(device);
    make(*page);
    return page->view;
}

void DevicePages::open(HostDevice *device)
{
    Page *page = pageOf(device);
    make(*page);
    setCurrentWidget(page->widget);
    if (page->view && !device->data().isEmpty())
        feed(*page, device->data());
}

void DevicePages::setUser(const QString &name, int level)
{
    m_userName = name;
    m_userLevel = level;
    for (const Page &page : qAsConst(m_devicePages))
        if (page.view)
            page.view->setUserInfo(name, level);
}

void DevicePages::feed(HostDevice *device, const HostEvent &event)
{
    Page *page = pageOf(device);
    if (event.type != DataReportEvent || !page->view)
        return;
    const bool isShown = currentWidget() == page->widget && isVisible();
    if (isShown || !page->fed.isValid() || page->fed.hasExpired(hiddenMs))
        feed(*page, event.data());
}

DevicePages::Page *DevicePages::pageOf(const HostDevice *device)
{
    for (Page &page : m_devicePages)
        if (page.device == device)
            return &page;
    return nullptr;
}

void DevicePages::make(Page &page)
{
    if (page.widget)
        return;
    page.view = page.device->view();
    if (!page.view) {
        auto *label = new QLabel(tr("The plug-in has no view for this device."));
        label->setAlignment(Qt::AlignCenter);
        page.widget = label;
    } else {
        // The view may ask for more room than the screen has.
        auto *area = new QScrollArea;
        area->setWidgetResizable(true);
        area->setFrameShape(QFrame::NoFrame);
        area->setWidget(page.view);
        page.view->setLanguage(m_language);
        page.view->setUserInfo(m_userName, m_userLevel);
        page.widget = area;
    }
    addWidget(page.widget);
}

void DevicePages::makeNext()
{
    for (Page &page : m_devicePages)
        if (!page.widget)
            return make(page);
}

void DevicePages::giveUp(Page &page)
{
    auto *area = qobject_cast<QScrollArea *>(page.widget);
    if (!area || !page.view)
        return;
    area->takeWidget()->setParent(nullptr);
    page.view = nullptr;
}

void DevicePages::feed(Page &page, const DataMap &report)
{
    const EventMap information = page.device->information();
    for (auto it = information.constBegin(); it != information.constEnd(); ++it)
        if (page.information.value(it.key()) != it.value())
            page.view->flushUpsInfo(it.key(), it.value());
    page.information = information;
    page.view->flushData(report);
    page.fed.start();
}
