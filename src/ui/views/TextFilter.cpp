// SPDX-License-Identifier: MIT
#include "views/TextFilter.h"

TextFilter::TextFilter(const QString& typed)
    : m_needsLocale(m_locale.language() == QLocale::Turkish ||
                    m_locale.language() == QLocale::Azerbaijani),
      m_typed(m_needsLocale ? m_locale.toLower(typed) : typed) {}

bool TextFilter::matches(const QString& text) const {
    if (m_needsLocale)
        return m_locale.toLower(text).contains(m_typed);
    return text.contains(m_typed, Qt::CaseInsensitive);
}
