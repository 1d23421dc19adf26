"""The virtual machine behind Colima: a network of its own, what runs in it, and what reaches it from the Mac."""
