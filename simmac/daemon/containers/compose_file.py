"""Reading a compose file as strictly as Docker does."""

import os
import re
from dataclasses import dataclass

import yaml

from daemon.containers import spec


class Refused(Exception):
    """A compose project that Docker refuses; the text is Docker's."""


@dataclass
class Project:
    """A compose project: its name, its services by name, and the volumes that it names."""

    name: str
    services: dict
    volumes: list


_TOP = {"name", "services", "volumes", "networks", "configs", "secrets", "version", "include"}
_SERVICE = {"image", "container_name", "restart", "ports", "environment", "env_file", "volumes", "cap_add", "cap_drop",
            "command", "entrypoint", "depends_on", "dns", "hostname", "healthcheck", "labels", "logging", "networks",
            "network_mode", "build", "expose", "extra_hosts", "init", "mem_limit", "privileged", "profiles",
            "pull_policy", "read_only", "secrets", "security_opt", "shm_size", "stop_grace_period", "stop_signal",
            "sysctls", "tmpfs", "tty", "stdin_open", "ulimits", "user", "working_dir", "deploy", "platform"}
_VOLUME = {"name", "driver", "driver_opts", "external", "labels"}
_PROJECT_NAME = re.compile(r"[a-z0-9][a-z0-9_-]*")


class _StrictLoader(yaml.SafeLoader):
    """A loader that refuses a key that stands twice."""

    def construct_mapping(self, node, deep=False):
        seen = {}
        for key, _ in node.value:
            line = key.start_mark.line + 1
            if key.value in seen:
                raise Refused(f"yaml: construct errors:\n  line {line}: mapping key \"{key.value}\" already defined "
                              f"at line {seen[key.value]}")
            seen[key.value] = line
        return super().construct_mapping(node, deep)


def load(path, variables):
    """Reads and checks a project; `variables` are those that ${NAME} may use."""
    try:
        with open(path, encoding="utf-8") as file:
            text = file.read()
    except OSError as error:
        raise Refused(f"open {path}: {error.strerror.lower()}") from error
    except UnicodeDecodeError as error:
        raise Refused(f"{path}: yaml: invalid leading UTF-8 octet") from error
    return _project(_parse(text, path), path, variables)


def _parse(text, path):
    try:
        data = yaml.load(text, _StrictLoader)
    except Refused:
        raise
    except yaml.MarkedYAMLError as error:
        line = error.problem_mark.line + 1 if error.problem_mark else 1
        raise Refused(f"yaml: line {line}: {error.problem}") from error
    except yaml.YAMLError as error:
        raise Refused("yaml: control characters are not allowed") from error
    if data is None:
        raise Refused("empty compose file")
    if not isinstance(data, dict):
        raise Refused(f"{path}: top-level object must be a mapping")
    return data


def _project(data, path, variables):
    _check_keys(data, _TOP, path, "")
    folder = os.path.dirname(os.path.abspath(path))
    name = data.get("name", re.sub(r"[^a-z0-9_-]", "", os.path.basename(folder).lower()))
    if not isinstance(name, str) or not _PROJECT_NAME.fullmatch(name):
        raise Refused(f'invalid project name "{name}": must consist only of lowercase alphanumeric characters, '
                      "hyphens, and underscores as well as start with a letter or number")
    volumes = _volumes(_mapping(data, "volumes", path), name, path)
    services = _mapping(data, "services", path)
    if not services:
        raise Refused("no service selected")
    made = {service: _service(service, body, path, folder, name, volumes, variables)
            for service, body in services.items()}
    return Project(name, made, list(volumes.values()))


def _mapping(data, key, path):
    value = data.get(key)
    if value is None:
        return {}
    if not isinstance(value, dict):
        raise Refused(f"validating {path}: {key} must be a mapping")
    return value


def _check_keys(data, known, path, where):
    for key in data:
        if key not in known and not str(key).startswith("x-"):
            raise Refused(f"validating {path}: {where}additional properties '{key}' not allowed")


def _volumes(declared, project, path):
    """Declared name to real name."""
    names = {}
    for key, body in declared.items():
        body = body or {}
        if not isinstance(body, dict):
            raise Refused(f"validating {path}: volumes.{key} must be a mapping")
        _check_keys(body, _VOLUME, path, f"volumes.{key} ")
        names[key] = str(body.get("name", f"{project}_{key}"))
    return names


def _service(service, body, path, folder, project, volumes, variables):
    if not isinstance(body, dict):
        raise Refused(f"validating {path}: services.{service} must be a mapping")
    _check_keys(body, _SERVICE, path, f"services.{service} ")
    if "image" not in body:
        raise Refused(f'service "{service}" has neither an image nor a build context specified: invalid compose '
                      "project")

    def text(value):
        return _interpolate(value, variables) if isinstance(value, str) else value

    try:
        repository, tag = spec.parse_image(str(text(body["image"])))
        ports = [_port(text(entry), path, service) for entry in _listed(body, "ports", path, service)]
        environment = {}
        for name in _env_files(body, path, service):
            environment.update(_env_file(folder, text(name), variables))
        environment.update(_environment(body.get("environment"), path, service, text, variables))
        mounts = dict(_mount(text(entry), path, service, volumes)
                      for entry in _listed(body, "volumes", path, service))
        restart = spec.parse_restart(_string(body.get("restart", "no"), path, f"services.{service}.restart"))
    except spec.Invalid as bad:
        raise Refused(str(bad)) from bad
    name = _string(body.get("container_name", f"{project}-{service}-1"), path, f"services.{service}.container_name")
    return spec.Spec(name, repository, tag, restart, ports, environment, mounts, project)


def _string(value, path, where):
    if not isinstance(value, str):
        raise Refused(f"validating {path}: {where} must be a string")
    return value


def _listed(body, key, path, service):
    value = body.get(key) or []
    if not isinstance(value, list):
        raise Refused(f"validating {path}: services.{service}.{key} must be a array")
    return value


def _port(entry, path, service):
    if isinstance(entry, dict):
        return spec.Port(str(entry.get("host_ip", "0.0.0.0")), int(entry.get("published", entry["target"])),
                         int(entry["target"]), entry.get("protocol", "tcp"))
    if isinstance(entry, bool) or not isinstance(entry, (str, int)):
        raise Refused(f"validating {path}: services.{service}.ports must be a string, number or mapping")
    return spec.parse_port(str(entry))


def _mount(entry, path, service, volumes):
    name, target = spec.parse_volume(_string(entry, path, f"services.{service}.volumes"))
    if name.startswith("/"):
        return name, target
    if name not in volumes:
        raise Refused(f'service "{service}" refers to undefined volume {name}: invalid compose project')
    return volumes[name], target


def _environment(value, path, service, text, variables):
    if value is None:
        return {}
    if isinstance(value, list):
        return dict(spec.parse_variable(str(text(entry)), variables) for entry in value)
    if not isinstance(value, dict):
        raise Refused(f"validating {path}: services.{service}.environment must be a mapping")
    for name, item in value.items():
        if isinstance(item, (dict, list)):
            raise Refused(f"validating {path}: services.{service}.environment.{name} must be a string, number, "
                          "boolean or null")
    return {str(name): variables.get(name) if item is None else _scalar(text(item)) for name, item in value.items()}


def _scalar(value):
    return str(value).lower() if isinstance(value, bool) else str(value)


def _env_files(body, path, service):
    value = body.get("env_file") or []
    entries = value if isinstance(value, list) else [value]
    return [_string(entry["path"] if isinstance(entry, dict) else entry, path, f"services.{service}.env_file")
            for entry in entries]


def _env_file(folder, name, variables):
    """The variables of an env file as compose reads them: quotes and comments are no part of a value."""
    path = os.path.join(folder, name)
    try:
        with open(path, encoding="utf-8") as file:
            lines = file.read().splitlines()
    except FileNotFoundError as error:
        raise Refused(f"env file {path} not found: stat {path}: no such file or directory") from error
    except OSError as error:
        raise Refused(f"open {path}: {error.strerror.lower()}") from error
    found = {}
    for number, line in enumerate(lines, 1):
        line = line.strip()
        if not line or line.startswith("#"):
            continue
        name, equals, value = line.removeprefix("export ").partition("=")
        if not re.fullmatch(r"[A-Za-z_.\-\[\]0-9]+\s*", name):
            raise Refused(f'failed to read {path}: line {number}: unexpected character in variable name "{line}"')
        if equals:
            found[name.strip()] = _env_value(value.strip(), variables)
    return found


def _env_value(value, variables):
    quote = value[:1]
    if quote in ("'", '"') and quote in value[1:]:
        inner = value[1:value.index(quote, 1)]
        return inner if quote == "'" else _interpolate(inner, variables)
    return _interpolate(re.split(r"\s+#", value)[0], variables)


_VARIABLE = re.compile(r"\$(?:(\$)|([A-Za-z_]\w*)|\{([A-Za-z_]\w*)(?:(:?[-?+])([^}]*))?\}|(.?))")


def _interpolate(text, variables):
    def replace(match):
        escaped, plain, braced, operator, default, wrong = match.groups()
        if escaped:
            return "$"
        if wrong is not None:
            raise Refused(f'invalid interpolation format for "{text}". You may need to escape any $ with another $')
        value = variables.get(plain or braced)
        if operator in ("-", ":-") and (value is None or (operator == ":-" and not value)):
            return default
        return value or ""
    return _VARIABLE.sub(replace, text)
