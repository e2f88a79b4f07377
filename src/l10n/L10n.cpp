// SPDX-License-Identifier: MIT
#include "L10n.h"

#include "LangManager.h"

QString L10n::Text::operator()() const {
    static_assert(std::size(decltype(m_texts){}) == allLangs.size());
    const QStringView text = m_texts[static_cast<std::size_t>(*LangManager::shared().current())];
    return QString::fromRawData(text.data(), text.size());
}
