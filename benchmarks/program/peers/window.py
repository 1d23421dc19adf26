"""An empty window made with PyQt: a peer of Corvane's memory."""

import sys

from PyQt6.QtWidgets import QApplication, QWidget

application = QApplication(sys.argv)
window = QWidget()
window.setWindowTitle("Bare window")
window.resize(980, 720)
window.show()
sys.exit(application.exec())
