#pragma once

#include <QCoreApplication>
#include <QTest>

/// The name of a test class in a program that has several, and how it runs. Each stands at the end of the class's
/// source, as KTZ_TEST or KTZ_TEST_MAIN, and lives as long as the program.
class CTestEntry
{
  public:
    using Main = int (*)(int argc, char** argv);

    CTestEntry(const char* name, Main main);

    CTestEntry(const CTestEntry&) = delete;
    CTestEntry& operator=(const CTestEntry&) = delete;

    /// The entries in no particular order: the first, and what follows each. Null after the last.
    [[nodiscard]] static const CTestEntry* first();
    [[nodiscard]] const CTestEntry* next() const;

    [[nodiscard]] const char* name() const;

    /// The arguments are those of a program that has this class alone.
    [[nodiscard]] int run(int argc, char** argv) const;

  private:
    const char* m_name;
    Main m_main;
    const CTestEntry* m_next;
};

/// KTZ_TEST_MAIN(TestName)(int argc, char** argv) { ... }: as the main() of a program that has this class alone.
#define KTZ_TEST_MAIN(Test)                                                                                            \
    static int main##Test(int argc, char** argv);                                                                      \
    static const CTestEntry g_entryOf##Test(#Test, main##Test);                                                        \
    static int main##Test

/// KTZ_TEST(QApplication, TestName): the class under an application of that type.
#define KTZ_TEST(Application, Test)                                                                                    \
    KTZ_TEST_MAIN(Test)(int argc, char** argv)                                                                         \
    {                                                                                                                  \
        Application application(argc, argv);                                                                           \
        /* The tests count pixels: a font is as large on every screen. */                                              \
        QCoreApplication::setAttribute(Qt::AA_Use96Dpi);                                                               \
        Test test;                                                                                                     \
        return QTest::qExec(&test, argc, argv);                                                                        \
    }
