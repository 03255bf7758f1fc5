#pragma once

#include "base/remarque.h"
#include "base/text.h"

#include <string>
#include <vector>

/// What remarks tell, in UTF-8.
inline std::vector<std::string> phrasesDe(const veltora::base::Remarques& remarques) {
  std::vector<std::string> phrases;
  for (const std::wstring& phrase : remarques.phrases()) phrases.push_back(veltora::base::toUtf8(phrase));
  return phrases;
}

/// The same, each behind a line end.
inline std::string texteDe(const veltora::base::Remarques& remarques) {
  std::string texte;
  for (const std::string& phrase : phrasesDe(remarques)) texte += phrase + "\n";
  return texte;
}
