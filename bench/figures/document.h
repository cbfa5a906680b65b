// The document that the record becomes.
#pragma once

#include <string>

#include "figures/record.h"

namespace tilora::bench {

/// Markdown. The plots are looked for in the folder `pictures`, the data is the file `data`, both seen from the document.
std::string document(const Record& record, const std::string& pictures, const std::string& data);

}  // namespace tilora::bench
