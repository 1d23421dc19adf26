# The Homebrew cask. `packaging/release` prints the checksum of the image it made; put it and the version in here: a cask in a tap
# is checked for it. From a tap that is not Homebrew's own, Homebrew 6 and newer install it after `brew trust`.
cask "corvane" do
  version "0.1.0"
  sha256 :no_check

  url "https://github.com/corvane/corvane/releases/download/v#{version}/Corvane-#{version}.dmg"
  name "Corvane"
  desc "Gives one Mac its own Pi-hole"
  homepage "https://github.com/corvane/corvane"

  depends_on arch: :arm64
  depends_on macos: :ventura

  app "Corvane.app"

  uninstall quit: "app.corvane.Corvane"

  zap trash: [
    "~/Library/Application Support/Corvane",
    "~/Library/Caches/Corvane",
    "~/Library/Preferences/app.corvane.Corvane.plist",
    "~/Library/Saved Application State/app.corvane.Corvane.savedState",
  ]

  caveats <<~EOS
    Before you uninstall Corvane, choose "Remove Pi-hole" in its settings. It gives this Mac its old DNS servers back.
  EOS
end
