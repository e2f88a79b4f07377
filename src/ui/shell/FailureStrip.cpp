// SPDX-License-Identifier: MIT
#include "shell/FailureStrip.h"

#include "BrewManager.h"
#include "widgets/Accessible.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int stripHeight = 31;

} // namespace

FailureStrip::FailureStrip(BrewManager& manager, QWidget* parent)
    : MessageStrip(u"failure"_s, stripHeight, parent) {
    setLook(u"exclamationmark.triangle"_s, &Theme::outdated, &Theme::failure);
    addCloseButton(u"closeFailure"_s);
    connect(this, &MessageStrip::closeRequested, this, [this] { setClosed(true); });
    manager.errorMessage.subscribe(
        this, [this](const std::optional<QString>& failure) { setFailure(failure); });
    setFailure(*manager.errorMessage);
}

void FailureStrip::setFailure(const std::optional<QString>& failure) {
    const bool isNew = failure != std::exchange(m_failure, failure);
    setMessage(failure.value_or(QString()));
    if (isNew && failure)
        Accessible::announce(this, message());
    setClosed(m_isClosed && !isNew);
}

void FailureStrip::setClosed(bool isClosed) {
    m_isClosed = isClosed;
    setVisible(m_failure.has_value() && !m_isClosed);
}
