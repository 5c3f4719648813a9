# shellcheck shell=bash
# Debian roots for the tests of the packages. Two are kept in build/debian for the next run: a bare
# one, and one that has besides what the package asks for. Both come from where apt gets Debian here.

# shellcheck disable=SC2154 # root: from scripts/common.sh
folder=$root/build/debian
bare=$folder/bare
prepared=$folder/prepared # as the text of its dependencies in prepared.depends says
debian=$folder/root       # one test's own

release() {
    sed -n 's/^VERSION_CODENAME=//p' /etc/os-release
}

# A line "URI RELEASE COMPONENT" for each of this Debian's folders that apt knows.
debian_sources() {
    # shellcheck disable=SC2016 # apt's own variables
    apt-get indextargets --format '$(REPO_URI) $(RELEASE) $(COMPONENT)' \
        'Created-By: Packages' 'Origin: Debian' | grep " $(release)[ -]" | sort -u
}

make_bare_root() {
    local uri log=$folder/debootstrap.log
    [ ! -d "$bare" ] || return 0
    echo "Making a root of Debian $(release) (log: build/debian/debootstrap.log)"
    uri=$(debian_sources | awk -v release="$(release)" '$2 == release { print $1; exit }')
    rm -rf "$bare.new"
    debootstrap --variant=minbase "$(release)" "$bare.new" "$uri" >"$log" 2>&1 || {
        tail -n 20 "$log" >&2
        die "debootstrap fails; the whole output is in build/debian/debootstrap.log"
    }
    mv "$bare.new" "$bare"
}

# download DEPENDENCIES ROOT: by this system's apt, as if the root were this system.
download() {
    local archives=$2/var/cache/apt/archives
    mkdir -p "$archives/partial"
    apt-get -qq -o Dir::State::status="$2/var/lib/dpkg/status" -o Dir::Cache::archives="$archives" \
        -o Dir::Cache::pkgcache= -o Dir::Cache::srcpkgcache= -o APT::Sandbox::User=root \
        --no-install-recommends --download-only -y satisfy "$1"
}

# make_prepared_root PACKAGE: all that it depends on, and nothing else.
make_prepared_root() {
    local depends log=$folder/prepare.log
    depends=$(dpkg-deb --field "$1" Depends)
    [ ! -d "$prepared" ] || [ "$(cat "$prepared.depends")" != "$depends" ] || return 0
    make_bare_root
    echo "Adding to it what the package depends on (log: build/debian/prepare.log)"
    rm -rf "$prepared" "$prepared.new"
    cp -a --reflink=auto "$bare" "$prepared.new"
    {
        download "$depends" "$prepared.new" &&
            chroot "$prepared.new" env DEBIAN_FRONTEND=noninteractive LC_ALL=C \
                sh -c 'dpkg --force-unsafe-io --install /var/cache/apt/archives/*.deb'
    } >"$log" 2>&1 || {
        tail -n 20 "$log" >&2
        die "cannot install what the package depends on; see build/debian/prepare.log"
    }
    rm "$prepared.new"/var/cache/apt/archives/*.deb
    chroot "$prepared.new" useradd --create-home user
    echo "$depends" >"$prepared.depends"
    mv "$prepared.new" "$prepared"
}

make_root() {
    rm -rf "$debian" && cp -a --reflink=auto "$prepared" "$debian"
}
