#include <QApplication>
#include <QLabel>
#include <QMainWindow>

// The least that a program with windows has to do to start.
int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    QMainWindow window;
    window.setWindowTitle("Bare window");
    window.resize(1000, 700);
    window.setCentralWidget(new QLabel("Ready"));
    window.show();
    return QApplication::exec();
}
