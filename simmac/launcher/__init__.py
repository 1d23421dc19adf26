"""The command that makes a simulated Mac and runs a program in it."""
