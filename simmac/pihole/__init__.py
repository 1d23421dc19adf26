"""A stand-in Pi-hole: DNS over UDP and TCP, the web API, and a container-like log, in one process."""
