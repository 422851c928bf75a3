import QtQuick
import Tavrix

// The questions and messages over the window, and the dialog for the destination.
Item {
    id: questions

    property bool isClosing: false
    property bool closesAfterwards: false
    property url droppedFolder
    property string dropText
    signal closeWanted
    signal sourceWanted

    function chooseDestination() {
        destinationDialog.active = true;
        destinationDialog.item.open();
    }
    // Asks whether to stop the transfer; with `closing`, to close the window after that.
    function askToStop(closing) {
        isClosing = closing;
        stopQuestion.open();
    }

    Loader {
        id: destinationDialog
        active: false
        source: "DestinationDialog.qml"
    }
    Connections {
        target: SourceMenuModel
        function onDestinationOffered(folder, text) {
            questions.droppedFolder = folder;
            questions.dropText = text;
            dropQuestion.open();
        }
    }
    Connections {
        target: ProgressModel
        function onChanged() {
            if (ProgressModel.isRunning)
                return;
            stopQuestion.close();
            if (questions.closesAfterwards)
                questions.closeWanted();
        }
    }

    QuestionBox {
        id: optimizedQuestion
        visible: QuestionModel.kind === QuestionModel.OptimizedCopies
        title: QuestionModel.title
        text: QuestionModel.text
        onRefused: QuestionModel.dismiss()

        PushButton {
            text: Words.cancel
            onClicked: QuestionModel.dismiss()
        }
        PushButton {
            text: Words.skipOptimized
            onClicked: QuestionModel.skipOptimized()
        }
        PushButton {
            leading: true
            focus: true
            text: Words.transferEverything
            onClicked: QuestionModel.transferEverything()
        }
    }
    QuestionBox {
        id: message
        visible: QuestionModel.kind !== QuestionModel.None && QuestionModel.kind !== QuestionModel.OptimizedCopies
        title: QuestionModel.title
        text: QuestionModel.text
        onRefused: QuestionModel.dismiss()

        PushButton {
            visible: QuestionModel.kind === QuestionModel.NoDevice
            text: Words.openFolder
            onClicked: {
                QuestionModel.dismiss();
                questions.sourceWanted();
            }
        }
        PushButton {
            visible: QuestionModel.kind === QuestionModel.NoDestination
            text: Words.cancel
            onClicked: QuestionModel.dismiss()
        }
        PushButton {
            leading: true
            focus: true
            text: QuestionModel.kind === QuestionModel.NoDestination ? Words.chooseFolder : Words.understood
            onClicked: {
                const choosesFolder = QuestionModel.kind === QuestionModel.NoDestination;
                QuestionModel.dismiss();
                if (choosesFolder)
                    questions.chooseDestination();
            }
        }
    }
    QuestionBox {
        id: stopQuestion
        title: Words.stopTitle
        text: ProgressModel.stopText
        onRefused: close()

        PushButton {
            text: questions.isClosing ? Words.stopAndClose : Words.stop
            onClicked: {
                questions.closesAfterwards = questions.isClosing;
                stopQuestion.close();
                ProgressModel.cancel();
            }
        }
        PushButton {
            leading: true
            focus: true
            text: Words.keepGoing
            onClicked: stopQuestion.close()
        }
    }
    QuestionBox {
        id: dropQuestion
        title: Words.dropTitle
        text: questions.dropText
        onRefused: close()

        PushButton {
            text: Words.cancel
            onClicked: dropQuestion.close()
        }
        PushButton {
            leading: true
            focus: true
            text: Words.dropAccept
            onClicked: {
                dropQuestion.close();
                DestinationModel.choose(questions.droppedFolder);
            }
        }
    }
}
