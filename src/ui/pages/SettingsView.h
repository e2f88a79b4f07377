// SPDX-License-Identifier: MIT
#pragma once

#include "views/Page.h"

#include <QCoroTask>

class LangManager;
class OutputSection;
class PushButton;
class SegmentedPicker;
class Spinner;

/// The interface language, Homebrew's cleanup and its self-diagnosis.
class SettingsView final : public Page {
    Q_OBJECT

public:
    SettingsView(LangManager& langManager, BrewManager& manager, QWidget* parent = nullptr);

protected:
    void render() override;

private:
    [[nodiscard]] QLayout* makeLanguage();
    [[nodiscard]] QLayout* makeCleanup();
    [[nodiscard]] QLayout* makeDoctor();
    void askToCleanUp();
    QCoro::Task<> previewCleanup();
    QCoro::Task<> runCleanup();
    QCoro::Task<> runDoctor();

    LangManager& m_langManager;
    /// The dry run's report, the notice that there is nothing, or a real cleanup's output.
    QString m_cleanupPreview;
    QString m_doctorOutput;
    bool m_isLoadingPreview{false};
    bool m_isRunningCleanup{false};
    bool m_isRunningDoctor{false};
    bool m_showConfirmCleanup{false};

    SegmentedPicker* m_picker{nullptr};
    PushButton* m_previewButton{nullptr};
    PushButton* m_cleanupButton{nullptr};
    Spinner* m_cleanupSpinner{nullptr};
    OutputSection* m_cleanupOutput{nullptr};
    PushButton* m_doctorButton{nullptr};
    Spinner* m_doctorSpinner{nullptr};
    OutputSection* m_doctorOutputSection{nullptr};
};
