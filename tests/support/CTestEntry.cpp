#include "tests/support/CTestEntry.h"

namespace
{
/// Set before any entry is made, whichever source of the program comes first.
constinit const CTestEntry* g_first = nullptr;
} // namespace

CTestEntry::CTestEntry(const char* name, Main main) : m_name(name), m_main(main), m_next(g_first)
{
    g_first = this;
}

const CTestEntry* CTestEntry::first()
{
    return g_first;
}

const CTestEntry* CTestEntry::next() const
{
    return m_next;
}

const char* CTestEntry::name() const
{
    return m_name;
}

int CTestEntry::run(int argc, char** argv) const
{
    return m_main(argc, argv);
}
