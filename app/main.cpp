#include "app/RunEditor.h"

int main(int argc, char** argv)
{
    return runEditor(argc, argv, {}, Editors::One);
}
