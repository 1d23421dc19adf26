"""The daemon of the simulated Mac: one process that holds the Mac's whole state and answers for its tools."""
