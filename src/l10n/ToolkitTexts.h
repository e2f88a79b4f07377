// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QTranslator>

class LangManager;
enum class Lang;

/// Has the toolkit speak the interface's language where it speaks for itself, as in the menus of
/// fields and texts. The manager outlives it.
class ToolkitTexts final : public QObject {
    Q_OBJECT

public:
    explicit ToolkitTexts(const LangManager& langManager, QObject* parent = nullptr);

private:
    void speak(Lang lang);

    QTranslator m_translator;
};
