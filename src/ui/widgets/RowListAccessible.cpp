// SPDX-License-Identifier: MIT
#include "widgets/RowListAccessible.h"

#include "widgets/DisplayText.h"
#include "widgets/RowListView.h"

/// What stands at the end of a row and isn't a mere word.
class RowListAccessible::RowActionAccessible final : public ItemAccessible {
public:
    RowActionAccessible(RowListView* list, int row, qsizetype place)
        : ItemAccessible(list, row), m_place(place) {}

    [[nodiscard]] bool isValid() const override {
        return m_place < rows()->m_model.row(index()).actions.size();
    }

    [[nodiscard]] QAccessibleInterface* parent() const override {
        return ItemAccessible::parent()->child(row());
    }

    [[nodiscard]] QString text(QAccessible::Text kind) const override {
        const RowAction shown = action();
        switch (kind) {
        case QAccessible::Name:
            return DisplayText::line(shown.title);
        case QAccessible::Description:
            return shown.toolTip == shown.title ? QString() : DisplayText::line(shown.toolTip);
        default:
            return {};
        }
    }

    [[nodiscard]] QRect rect() const override {
        const QRect area = rows()->actionRect(index(), m_place);
        return {list()->viewport()->mapToGlobal(area.topLeft()), area.size()};
    }

    [[nodiscard]] QAccessible::Role role() const override {
        return isBusy() ? QAccessible::Animation : QAccessible::Button;
    }

    [[nodiscard]] QAccessible::State state() const override {
        QAccessible::State state = ItemAccessible::state();
        state.selectable = false;
        state.selected = false;
        state.busy = isBusy();
        state.disabled = !state.busy && !action().canTrigger();
        state.focusable = action().canTrigger();
        state.focused = state.focused && rows()->m_currentAction == m_place;
        return state;
    }

    [[nodiscard]] QStringList actionNames() const override {
        return action().canTrigger() ? QStringList{pressAction()} : QStringList();
    }

    void doAction(const QString& name) override {
        // Later, for it may replace the rows, and this with them.
        const QString id = rows()->m_model.row(index()).id;
        const auto act = [list = rows(), id, title = action().title] {
            if (!isCovered(list))
                list->trigger(id, title);
        };
        if (actionNames().contains(name))
            QMetaObject::invokeMethod(list(), act, Qt::QueuedConnection);
    }

private:
    [[nodiscard]] RowListView* rows() const { return static_cast<RowListView*>(list()); }

    [[nodiscard]] RowAction action() const {
        return rows()->m_model.row(index()).actions.value(m_place);
    }

    [[nodiscard]] bool isBusy() const { return action().kind == RowAction::Kind::Spinner; }

    qsizetype m_place;
};

class RowListAccessible::RowAccessible final : public ItemAccessible {
public:
    RowAccessible(RowListView* list, int row) : ItemAccessible(list, row) {}

    ~RowAccessible() override {
        for (const QAccessible::Id id : std::as_const(m_actions))
            QAccessible::deleteAccessibleInterface(id);
    }

    [[nodiscard]] int childCount() const override { return static_cast<int>(places().size()); }

    [[nodiscard]] QAccessibleInterface* child(int number) const override {
        const QList<qsizetype> places = this->places();
        return number >= 0 && number < places.size() ? actionAt(places.at(number)) : nullptr;
    }

    [[nodiscard]] QAccessibleInterface* actionAt(qsizetype place) const {
        if (const auto known = m_actions.constFind(place); known != m_actions.cend())
            return QAccessible::accessibleInterface(*known);
        auto* const action = new RowActionAccessible(rows(), row(), place);
        m_actions.insert(place, QAccessible::registerAccessibleInterface(action));
        return action;
    }

    [[nodiscard]] QAccessible::State state() const override {
        QAccessible::State state = ItemAccessible::state();
        state.selectable = isSelectable();
        state.selected = rows()->stateOf(index()).isSelected;
        state.focused = state.focused && !rows()->m_currentAction;
        return state;
    }

    [[nodiscard]] QStringList actionNames() const override {
        QStringList names;
        if (isSelectable())
            names.append(pressAction());
        for (const RowAction& action : rows()->menuActions(shown()))
            names.append(action.title);
        if (isChoice())
            names.append(setFocusAction());
        return names;
    }

    [[nodiscard]] QString localizedActionName(const QString& name) const override {
        // All but two are named in the user's language.
        return name == pressAction() || name == setFocusAction()
                   ? ItemAccessible::localizedActionName(name)
                   : DisplayText::line(name);
    }

    void doAction(const QString& name) override {
        if (name == setFocusAction() || !actionNames().contains(name)) {
            ItemAccessible::doAction(name);
            return;
        }
        // Later, for it may replace the rows, and this with them.
        const auto act = [list = rows(), id = shown().id, name] {
            const QModelIndex index = list->m_model.indexOf(id);
            if (!index.isValid() || isCovered(list))
                return;
            list->setCurrentIndex(index);
            if (name == pressAction())
                list->activate({index, std::nullopt});
            else
                list->trigger(id, name);
        };
        QMetaObject::invokeMethod(list(), act, Qt::QueuedConnection);
    }

private:
    [[nodiscard]] RowListView* rows() const { return static_cast<RowListView*>(list()); }

    [[nodiscard]] Row shown() const { return rows()->m_model.row(index()); }

    [[nodiscard]] bool isSelectable() const {
        return isChoice() && rows()->m_selectable == RowListView::Selectable::Yes;
    }

    /// Of the actions that are more than a word, which the row says itself.
    [[nodiscard]] QList<qsizetype> places() const {
        const QList<RowAction> actions = shown().actions;
        QList<qsizetype> places;
        for (qsizetype place = 0; place < actions.size(); ++place) {
            if (actions.at(place).kind != RowAction::Kind::Badge)
                places.append(place);
        }
        return places;
    }

    /// Those that somebody has asked for, by place.
    mutable QHash<qsizetype, QAccessible::Id> m_actions;
};

RowListAccessible::RowListAccessible(RowListView* list) : ListAccessible(list) {}

QAccessibleInterface* RowListAccessible::makeItem(int row) const {
    return new RowAccessible(static_cast<RowListView*>(list()), row);
}

QAccessibleInterface* RowListAccessible::focusChild() const {
    QAccessibleInterface* const row = ListAccessible::focusChild();
    if (row == nullptr)
        return nullptr;
    const auto place = static_cast<RowListView*>(list())->m_currentAction;
    return place ? static_cast<RowAccessible*>(row)->actionAt(*place) : row;
}
