# Installation and the Debian package (rules in cmake/install.cmake).
#
#   make install [PREFIX=/usr/local] [DESTDIR=/stage]
#                        program and stylesheets into PREFIX/libexec/qreport,
#                        the launcher into PREFIX/bin, man page and docs
#   make install-test    install into temporary prefixes and run the example
#   make package         BUILD/qendor_<version>_<arch>.deb
#   make package-test    check the package's contents, install it with dpkg,
#                        run the example by bare name, remove it again (root)

# dpkg-shlibdeps and file find the package's library dependencies; groff and
# man check the man page.
package install-test: PACKAGES += dpkg-dev file groff-base man-db

.PHONY: install install-test package package-test

install: build
	@DESTDIR="$(DESTDIR)" cmake --install $(BUILD) $(if $(PREFIX),--prefix "$(PREFIX)")

install-test: build
	@sh tests/install_test.sh $(BUILD) .

package: build
	@rm -f $(BUILD)/qendor_*.deb $(BUILD)/qendor_*.deb.sha256
	@cd $(BUILD) && cpack -G DEB

package-test: package
	@sh tests/package_test.sh $(BUILD) .
