#include "qt/qt_test.h"

int main(int argc, char** argv) { return tresmor::tests::RunWindowTests(argc, argv); }
