/// All tools of the process, in the order of their creation.
#pragma once

#include "TAVIX20/platform/export.h"

#include <memory>
#include <vector>

class CDrawTool;
class CSelectTool;

namespace tavix {

/// Made when the library is loaded.
class TAVIX_API ToolRegistry {
public:
    static ToolRegistry &Instance();

    ToolRegistry(const ToolRegistry &) = delete;
    ToolRegistry &operator=(const ToolRegistry &) = delete;

    /// The first tool with that identifier; null when there is none.
    CDrawTool *Find(int id) const;
    /// The tool whose identifier is the global current one; null when there is none.
    CDrawTool *Current() const;
    CDrawTool &Select() const { return *m_tools.front(); }
    const std::vector<std::unique_ptr<CDrawTool>> &Tools() const { return m_tools; }

private:
    ToolRegistry();
    ~ToolRegistry();

    std::vector<std::unique_ptr<CDrawTool>> m_tools;
};

} // namespace tavix
