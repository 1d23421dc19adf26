"""Bringing an image here, layer by layer."""

from daemon.containers import errors, spec
from daemon.containers.docker_parts import engine_of, need_words, options_of

_SECONDS = 12.0
_FINDS_OUT = 0.8


async def pull(call, args):
    options = options_of("pull", args, switches=("-q|--quiet", "-a|--all-tags"), values=("--platform",))
    need_words("pull", options)
    try:
        repository, tag = spec.parse_image(options.words[0])
    except spec.Invalid as bad:
        raise errors.DockerError(str(bad)) from bad
    if ":" not in options.words[0]:
        await call.out("Using default tag: latest\n")
    await fetch(call, repository, tag, call.out)
    await call.out(f"{errors.REGISTRY}/{repository}:{tag}\n")
    return 0


async def fetch(call, repository, tag, say):
    """Pulls an image, telling about it as the client does without a terminal."""
    engine = engine_of(call)
    await call.pause(_FINDS_OUT)
    await engine.check_image(repository, tag)
    new = tag not in engine.images
    await say(f"{tag}: Pulling from {repository}\n")
    if new:
        await _layers(call, engine, tag, lambda layer, word: say(f"{layer}: {word}\n"))
        engine.images.add(tag)
    await say(f"Digest: {engine.registry.digest(tag)}\n")
    await say(f"Status: {'Downloaded newer image' if new else 'Image is up to date'} for {repository}:{tag}\n")


async def _layers(call, engine, tag, tell):
    here = {layer for other in engine.images for layer in engine.registry.layers(other)}
    every, layers = engine.registry.layers(tag), []
    for layer in every:
        await tell(layer, "Already exists" if layer in here else "Pulling fs layer")
        layers += [] if layer in here else [layer]
    for layer in layers[3:]:
        await tell(layer, "Waiting")
    pause = _SECONDS / (2 * len(every))
    for layer in layers:
        await call.pause(pause)
        await tell(layer, "Verifying Checksum")
        await tell(layer, "Download complete")
    for layer in layers:
        await call.pause(pause)
        engine.reach()
        if engine.disk_full:
            raise errors.disk_full()
        await tell(layer, "Pull complete")


async def fetch_for_compose(call, service, repository, tag):
    """Pulls an image as the compose plug-in tells about it."""
    engine = engine_of(call)
    await call.err(f" {service} Pulling \n")
    await call.pause(_FINDS_OUT)
    try:
        await engine.check_image(repository, tag)
        if tag not in engine.images:
            await _layers(call, engine, tag, lambda layer, word: call.err(f" {layer} {word} \n"))
            engine.images.add(tag)
    except errors.DockerError as error:
        await call.err(f" {service} Error {error.text.removeprefix('Error response from daemon: ')}\n")
        raise
    await call.err(f" {service} Pulled \n")
