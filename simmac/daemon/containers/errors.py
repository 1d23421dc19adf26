"""What Docker says when something does not work."""

SOCKET = "/Users/ada/.colima/default/docker.sock"
DEFAULT_SOCKET = "/var/run/docker.sock"
OTHER_SOCKET = "/Users/ada/.docker/run/docker.sock"   # that of the context "desktop-linux"
CONTEXT = "colima"
REGISTRY = "registry.example"


class DockerError(Exception):
    """Ends a docker command: what it prints on standard error, and its status."""

    def __init__(self, text, status=1):
        super().__init__(text)
        self.text = text
        self.status = status


def from_daemon(text):
    return DockerError(f"Error response from daemon: {text}")


def engine_down(socket):
    return DockerError(f"Cannot connect to the Docker daemon at unix://{socket}. Is the docker daemon running?")


def no_permission(socket):
    quoted = socket.replace("/", "%2F")
    return DockerError("permission denied while trying to connect to the Docker daemon socket at "
                       f'unix://{socket}: Get "http://{quoted}/v1.51/info": dial unix {socket}: connect: '
                       "permission denied")


def no_container(name):
    return from_daemon(f"No such container: {name}")


def name_taken(name, other_id):
    return from_daemon(f'Conflict. The container name "/{name}" is already in use by container "{other_id}". '
                       "You have to remove (or rename) that container to be able to reuse that name.")


def no_manifest(repository, tag):
    return from_daemon(f"manifest for {repository}:{tag} not found: manifest unknown: manifest unknown")


def no_repository(repository):
    return from_daemon(f"pull access denied for {repository}, repository does not exist or may require "
                       "'docker login': denied: requested access to the resource is denied")


def no_internet():
    return from_daemon(f'Get "https://{REGISTRY}/v2/": dial tcp: lookup {REGISTRY} on 192.168.5.1:53: no such host')


def disk_full():
    return DockerError("failed to register layer: write /usr/bin/pihole-FTL: no space left on device")


def port_allocated(container, address, port):
    return from_daemon("failed to set up container networking: driver failed programming external connectivity on "
                       f"endpoint {container.name} ({container.id}): Bind for {address}:{port} failed: port is "
                       "already allocated")


def port_in_use(container, address, port, protocol):
    return from_daemon("failed to set up container networking: driver failed programming external connectivity on "
                       f"endpoint {container.name} ({container.id}): failed to bind host port "
                       f"{address}:{port}/{protocol}: address already in use")
