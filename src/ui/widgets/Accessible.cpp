// SPDX-License-Identifier: MIT
#include "widgets/Accessible.h"

#include "widgets/DisplayText.h"
#include "widgets/RowListAccessible.h"
#include "widgets/RowListView.h"

#include <QAbstractButton>
#include <QAccessibleWidget>
#include <QApplication>
#include <QMenu>

namespace {

constexpr const char* roleProperty = "accessibleRole";

/// The toolkit's own tells every button to be a push button or a check box.
class ButtonAccessible final : public QAccessibleWidget {
public:
    using QAccessibleWidget::QAccessibleWidget;

    [[nodiscard]] QStringList actionNames() const override {
        QStringList names = QAccessibleWidget::actionNames();
        if (widget()->isEnabled())
            names.prepend(pressAction());
        return names;
    }

    void doAction(const QString& name) override {
        if (name == pressAction())
            static_cast<QAbstractButton*>(widget())->click();
        else
            QAccessibleWidget::doAction(name);
    }
};

class DialogAccessible final : public QAccessibleWidget {
public:
    using QAccessibleWidget::QAccessibleWidget;

    [[nodiscard]] QAccessible::State state() const override {
        QAccessible::State state = QAccessibleWidget::state();
        state.modal = true;
        return state;
    }
};

/// The toolkit leaves out menus that aren't in a menu bar.
class WindowAccessible final : public QAccessibleWidget {
public:
    using QAccessibleWidget::QAccessibleWidget;

    [[nodiscard]] int childCount() const override {
        return QAccessibleWidget::childCount() + (openMenu() != nullptr ? 1 : 0);
    }

    [[nodiscard]] QAccessibleInterface* child(int place) const override {
        return place == QAccessibleWidget::childCount() ? openMenu()
                                                        : QAccessibleWidget::child(place);
    }

    [[nodiscard]] int indexOfChild(const QAccessibleInterface* child) const override {
        return child != nullptr && child == openMenu() ? QAccessibleWidget::childCount()
                                                       : QAccessibleWidget::indexOfChild(child);
    }

private:
    [[nodiscard]] QAccessibleInterface* openMenu() const {
        auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        const bool isOurs = menu != nullptr && menu->parentWidget() != nullptr &&
                            menu->parentWidget()->window() == widget();
        return isOurs ? QAccessible::queryAccessibleInterface(menu) : nullptr;
    }
};

QAccessibleInterface* make(const QString&, QObject* object) {
    const QVariant wanted = object->property(roleProperty);
    if (!wanted.isValid())
        return nullptr;
    const auto role = static_cast<QAccessible::Role>(wanted.toInt());
    auto* const widget = static_cast<QWidget*>(object);
    if (auto* const rows = qobject_cast<RowListView*>(widget))
        return new RowListAccessible(rows);
    if (auto* const list = qobject_cast<QListView*>(widget))
        return new ListAccessible(list);
    if (qobject_cast<QAbstractButton*>(widget) != nullptr)
        return new ButtonAccessible(widget, role);
    if (role == QAccessible::Dialog || role == QAccessible::AlertMessage)
        return new DialogAccessible(widget, role);
    if (role == QAccessible::Window)
        return new WindowAccessible(widget, role);
    return new QAccessibleWidget(widget, role);
}

} // namespace

void Accessible::setRole(QWidget* widget, QAccessible::Role role) {
    widget->setProperty(roleProperty, static_cast<int>(role));
    // Installing it again changes nothing.
    QAccessible::installFactory(make);
}

void Accessible::announce(QWidget* widget, const QString& text) {
    const QString spoken = DisplayText::line(text);
    widget->setAccessibleName(spoken);
#if QT_VERSION >= QT_VERSION_CHECK(6, 8, 0)
    // What is to appear is read out then.
    if (!widget->isVisible())
        return;
    QAccessibleAnnouncementEvent event(widget, spoken);
    QAccessible::updateAccessibility(&event);
#else
    const auto tell = [widget](QAccessible::Event type) {
        QAccessibleEvent event(widget, type);
        QAccessible::updateAccessibility(&event);
    };
    tell(QAccessible::Alert);
    // Alerts don't get as far as the bus, where a notification is read out when it appears. This
    // one has done so already.
    if (widget->isVisible())
        tell(QAccessible::ObjectShow);
#endif
}
