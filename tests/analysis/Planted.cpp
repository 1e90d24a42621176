// One fault for each tool that looks for them. Nothing compiles this file.
#include <QList>

double halfOf(int size)
{
    return size / 2;
}

const QList<int> madeBeforeMain = {1, 2, 3};

void leak()
{
    int* numbers = new int[3];
    numbers[0] = 0;
}
