# The build environment as a container: docker build -t lumarind-engine . && docker run --rm -it -v "$PWD:/src" lumarind-engine
FROM debian:forky
COPY packages.list /tmp/packages.list
RUN apt-get update \
    && apt-get install -y --no-install-recommends $(awk '!/^#/ && NF && $1 != "-" { print $1 }' /tmp/packages.list) \
    && rm -rf /var/lib/apt/lists/* /tmp/packages.list
WORKDIR /src
CMD ["./dev", "test"]
