#include "editor/window/EditorProgram.h"
#include "platform/Console.h"

int main(int argc, char** argv)
{
    platform::UseUtf8Console();
    return editor::RunProgram(argc, argv);
}
